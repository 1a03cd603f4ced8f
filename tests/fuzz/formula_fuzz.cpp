// Any bytes as the text of a formula: they are read and built, or refused by a FormulaError; what
// was built comes back from its own text. A line `---` ends the formula and begins a definition
// of the name `part`.

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/signal/held_name.hpp>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace vorm::evaluation;

std::optional<ParsedFormula> parsed(std::string_view text) {
    try {
        return ParsedFormula(std::string(text));
    } catch (const FormulaError& error) {
        if (error.span().begin + error.span().length > text.size() || *error.what() == '\0') {
            std::abort();
        }
        return std::nullopt;
    }
}

const std::map<std::string, SignalType>& signals() {
    using vorm::assessments::HalfFloat;
    static const std::map<std::string, SignalType> types{
        {"x", SignalType::of<double>()},
        {"y", SignalType::of<float>()},
        {"n", SignalType::of<std::int8_t>()},
        {"u", SignalType::of<std::uint64_t>()},
        {"h", SignalType::of<HalfFloat>()},
        {"f", SignalType::of<vorm::assessments::ValueType<vorm::assessments::FixedPoint>>()},
        {"p", SignalType::of<bool>()},
        {"q q", SignalType::of<bool>()},
        {"any", SignalType()},
        {"Mode",
         SignalType::of(std::make_shared<Enumeration>(Enumeration{"Mode", {"N", "R", "x"}}))},
    };
    return types;
}

std::optional<SignalType> typeOf(const std::string& name) {
    const auto known = signals().find(recordedName(name));
    return known == signals().end() ? std::nullopt : std::optional(known->second);
}

void requireSame(const vorm::assessments::Expression& one,
                 const vorm::assessments::Expression& other) {
    if (!vorm::assessments::ExpressionEqual<vorm::assessments::ModuloAliases>()(one, other)) {
        std::abort();
    }
}

void rereadUntyped(const ParsedFormula& formula) {
    std::optional<vorm::assessments::Expression> tree;
    try {
        tree = expressionOf(formula);
    } catch (const FormulaError&) {
        return;
    }
    requireSame(*tree, expressionOf(ParsedFormula(formulaText(*tree))));
}

void rereadTyped(const ParsedFormula& formula, const FormulaNames& names) {
    std::optional<Formula> built;
    try {
        built = buildFormula(formula, names);
    } catch (const FormulaError&) {
        return;
    }
    requireSame(built->tree, buildFormula(ParsedFormula(formulaText(built->tree)), names).tree);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view separator = "\n---\n";
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find(separator);
    const std::optional<ParsedFormula> formula = parsed(input.substr(0, end));
    if (!formula) {
        return 0;
    }
    FormulaNames names{typeOf, {}, {"x", "y", "n", "p", "q q", "Mode"}, "not read: x"};
    if (end != std::string_view::npos) {
        if (const auto part = parsed(input.substr(end + separator.size()))) {
            names.definitions.emplace("part", *part);
        }
    }
    formula->names();
    rereadUntyped(*formula);
    rereadTyped(*formula, names);
    return 0;
}
