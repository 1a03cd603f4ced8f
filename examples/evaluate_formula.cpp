#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <iostream>

using namespace vorm;

int main() {
    assessments::TimedTrace_T<double> pressure(assessments::INTERPOLATION_METHOD::LINEAR, 0);
    for (const auto& [time, bar] : {std::pair(0., 2.), {4., 8.}, {8., 3.}, {12., 3.}}) {
        pressure.push_back({time, bar});
    }
    const auto pieces = std::make_shared<const evaluation::TracePieces>(
        evaluation::TracePieces{assessments::TimedTrace(std::move(pressure))});

    evaluation::FormulaNames names;
    names.signalType = [](const std::string& name) -> std::optional<evaluation::SignalType> {
        return name == "pressure" ? std::optional(evaluation::SignalType::of<double>())
                                  : std::nullopt;
    };
    const auto formula = evaluation::buildFormula(
        evaluation::ParsedFormula("pressure > 5 -> eventually[0, 2 s](pressure < 4)"), names);
    const auto results =
        evaluation::evaluate({{&formula.tree}}, [&](const auto&) { return pieces; });

    for (const assessments::TimedTrace& piece : evaluation::knownPieces(*results[0].truth)) {
        for (const auto& interval : piece.getErrorIntervalList()) {
            std::cout << "fails from " << interval.start << " s to " << interval.end << " s\n";
        }
        std::cout << "no result after " << piece.getLastKnownTime() << " s\n";
    }
}
