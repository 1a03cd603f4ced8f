// How a caller evaluates formulas: bottom-up over the tree, with one result per sub-formula.
//
// A pump has to come up to pressure within two seconds of every command, and must not start with a
// closed valve. A second formula cannot be evaluated; the failure tells which part of it and why.

#include <vorm/assessments.hpp>

#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>

using namespace vorm::assessments;

namespace {

/// Knows the traces of the leaves at first, and each sub-formula's once it was evaluated.
class Evaluation : public boost::static_visitor<TimedTrace> {
public:
    explicit Evaluation(const ExpressionTraces& leaves) : results_(leaves) {}

    const TimedTrace& resultOf(const Expression& formula) {
        if (const auto known = results_.find(formula); known != results_.end()) {
            return known->second;
        }
        try {
            TimedTrace result = boost::apply_visitor(*this, formula);
            return results_.emplace(formula, std::move(result)).first->second;
        } catch (...) {
            evaluation_exception_dispatcher(formula);
            throw;
        }
    }

    TimedTrace operator()(const unary_op& node) {
        const TimedTrace& x = resultOf(node.child);
        switch (node.op) {
            case VORM_OP::UnaryMinus:
                return x.UnaryMinus();
            case VORM_OP::Abs:
                return x.Abs();
            case VORM_OP::Slope:
                return x.Slope();
            case VORM_OP::Not: {
                const auto& truth = x.get<bool>();
                return truth.Function(truth, [](bool value, bool) { return !value; });
            }
            default:
                throw std::invalid_argument("No unary operator: " + node.label);
        }
    }

    TimedTrace operator()(const binary_op& node) {
        const TimedTrace& left = resultOf(node.lhs);
        const TimedTrace& right = resultOf(node.rhs);
        switch (node.op) {
            case VORM_OP::Plus:
                return left.Plus(right);
            case VORM_OP::Minus:
                return left.Minus(right);
            case VORM_OP::Multiply:
                return left.Scale(right);
            case VORM_OP::And:
                return left.And(right);
            case VORM_OP::Or:
                return left.Or(right);
            case VORM_OP::Gt:
                return greater(left, right);
            case VORM_OP::Lt:
                return greater(right, left);
            default:
                throw std::invalid_argument("Not needed here: " + node.label);
        }
    }

    TimedTrace operator()(const timed_unary_op& node) {
        const TimedTrace& x = resultOf(node.child);
        return node.op == VORM_OP::Shift ? x.Shift(node.offset) : x.EpsilonShift(node.offset);
    }

    TimedTrace operator()(const timedwindow_unary_op& node) {
        const TimedTrace& x = resultOf(node.child);
        return node.op == VORM_OP::Globally ? x.Globally(node.a, node.b)
                                            : x.Eventually(node.a, node.b);
    }

    TimedTrace operator()(const timedwindow_binary_op& node) {
        const TimedTrace& left = resultOf(node.lhs);
        return left.Until(node.a, node.b, resultOf(node.rhs));
    }

    TimedTrace operator()(const alias& node) { return resultOf(node.body); }

    TimedTrace operator()(const cast_op&) { throw std::invalid_argument("Casts: not needed here"); }
    TimedTrace operator()(const variable& node) {
        throw std::invalid_argument("No recording of " + node.name);
    }
    TimedTrace operator()(const constantValue& node) {
        throw std::invalid_argument("A literal of another factory: " + node.label);
    }
    TimedTrace operator()(const nilClass&) { throw std::invalid_argument("No formula"); }

private:
    static TimedTrace greater(const TimedTrace& left, const TimedTrace& right) {
        return left.visit([&right]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
            return typed.template combine<bool>(right.get<T>(), ValueGreater());
        });
    }

    ExpressionTraces results_;
};

void report(const Expression& formula, const ExpressionTraces& traces) {
    std::cout << formula << '\n';
    try {
        Evaluation evaluation(traces);
        const TimedTrace& result = evaluation.resultOf(formula);
        const double start = ExpressionFirstStartTimeVisitor(traces).firstStartTime(formula);
        const double end = ExpressionLastKnownTimeVisitor(traces).lastKnownTime(formula);
        const TimedTrace verdicts = result.ConvertToResult(start, end);
        for (const VORM_Interval& interval : result.getErrorIntervalList()) {
            std::cout << "  fails from " << interval.start << " s to " << interval.end << " s\n";
        }
        if (verdicts.getLastKnownTime() < end) {
            std::cout << "  no result after " << verdicts.getLastKnownTime() << " s\n";
        }
    } catch (const AssessmentException& failure) {
        for (const AssessmentException* link = &failure; link != nullptr;
             link = link->getCause().get()) {
            std::cout << "  " << link->what() << '\n';
        }
    }
}

TimedTrace_T<double> pressureTrace() {
    TimedTrace_T<double> pressure(INTERPOLATION_METHOD::LINEAR, 0);
    pressure.push_back({0, 1});
    pressure.push_back({3, 1});
    pressure.push_back({4, 6});
    pressure.push_back({7, 1});
    pressure.push_back({10, 6});
    pressure.push_back({12, 6});
    return pressure;
}

TimedTrace_T<bool> switchTrace(bool first, double changesAt, double changesBackAt) {
    TimedTrace_T<bool> state(INTERPOLATION_METHOD::ZOH, 0);
    state.push_back({0, first});
    state.push_back({changesAt, !first});
    state.push_back({changesBackAt, first});
    state.lastKnownTime = 12;
    return state;
}

}  // namespace

int main() {
    ExpressionFactory f;
    const Expression pressure = f.Variable("pressure", pressureTrace());
    const Expression command = f.Variable("command", switchTrace(false, 2, 8));
    const Expression closed = f.Variable("closed", switchTrace(true, 1, 7.5));

    const Expression underPressure = f.Gt(pressure, f.Constant(5.0));
    report(f.Implies(command, f.Eventually(0, 2, underPressure)), f.getTraces());
    report(f.Not(f.And(command, closed)), f.getTraces());
    report(f.Globally(0, 1, f.Not(f.Plus(pressure, closed))), f.getTraces());
}
