#include "node_evaluation.hpp"

#include <vorm/assessments/errors/assessment_internal_exception.hpp>
#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/evaluation/evaluator/comparison.hpp>
#include <vorm/evaluation/evaluator/conversion.hpp>
#include <vorm/evaluation/evaluator/node_meaning.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/robustness.hpp>
#include <vorm/evaluation/evaluator/step_line.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// The tag of a plain literal; all others are those of enumerations.
constexpr std::int32_t plainTag = 1;

SharedPieces constantPieces(const constantValue& literal) {
    TracePieces pieces{boost::apply_visitor(
        [&]<class T>(const T& value) -> TimedTrace {
            TimedTrace_T<T> constant(value);
            if (literal.tag != plainTag) {
                constant.enumTypeName = literal.name;
            }
            return constant;
        },
        literal.value)};
    return std::make_shared<const TracePieces>(std::move(pieces));
}

// Whether a factor is decided here and not by Scale, for which whatever is left of a signal that is
// cut to one sample would do.
SharedPieces scaled(const TracePieces& left, const TracePieces& right) {
    const auto isFactor = [](const TracePieces& pieces) {
        return pieces.empty() || (pieces.size() == 1 && pieces.front().isConstantScalar());
    };
    if (!isFactor(left) && !isFactor(right)) {
        throw AssessmentInternalException("Only multiplication by constant is supported.");
    }
    return onPairs(left, right,
                   [](const TimedTrace& l, const TimedTrace& r) { return l.Scale(r); });
}

void requireHeld(const TimedTrace& operand) {
    if (operand.getInterpolation() == INTERPOLATION_METHOD::LINEAR) {
        throw AssessmentInternalException("Until on numbers needs held signals.");
    }
}

// What the goal does while the condition is not known must not count.
TimedTrace untilWhileKnown(const TimedTrace& condition, const TimedTrace& goal, double a,
                           double b) {
    requireHeld(condition);
    requireHeld(goal);
    if (isConstant(goal)) {
        // What is reached ever is reached as soon as it counts.
        return condition.Globally(0, a).And(goal);
    }
    const double start = condition.getStartTime();
    const double end = condition.getLastKnownTime();
    const bool goalIsInside = goal.getStartTime() >= start && goal.getLastKnownTime() <= end;
    return goalIsInside ? condition.Until(a, b, goal)
                        : condition.Until(a, b, goal.extractWindow(start, end, 0));
}

class NodeEvaluation : public boost::static_visitor<SharedPieces> {
public:
    NodeEvaluation(Meaning meaning, const std::vector<SharedPieces>& operands,
                   const SignalLookup& signals)
        : meaning_(meaning), operands_(operands), signals_(signals) {}

    SharedPieces operator()(const constantValue& node) const { return constantPieces(node); }
    SharedPieces operator()(const variable& node) const { return signals_(node); }

    SharedPieces operator()(const unary_op& node) const {
        switch (node.op) {
            case VORM_OP::UnaryMinus:
                return onOperand([](const TimedTrace& x) { return x.UnaryMinus(); });
            case VORM_OP::Abs:
                return onOperand([](const TimedTrace& x) { return x.Abs(); });
            case VORM_OP::Slope:
                return onOperand([](const TimedTrace& x) { return x.Slope(); });
            case VORM_OP::Not:
                return isRobustness()
                           ? onOperand([](const TimedTrace& x) { return x.UnaryMinus(); })
                           : onOperand(logicalNot);
            default:
                throwNoOperator(node.label);
        }
    }

    SharedPieces operator()(const timed_unary_op& node) const {
        switch (node.op) {
            case VORM_OP::Shift:
                return onOperand([&](const TimedTrace& x) { return x.Shift(node.offset); });
            case VORM_OP::EpsilonShift:
                return onOperand([&](const TimedTrace& x) { return x.EpsilonShift(node.offset); });
            default:
                throwNoOperator(node.label);
        }
    }

    SharedPieces operator()(const timedwindow_unary_op& node) const {
        switch (node.op) {
            case VORM_OP::Eventually:
                return onOperand([&](const TimedTrace& x) { return x.Eventually(node.a, node.b); });
            case VORM_OP::Globally:
                return onOperand([&](const TimedTrace& x) { return x.Globally(node.a, node.b); });
            default:
                throwNoOperator(node.label);
        }
    }

    SharedPieces operator()(const timedwindow_binary_op& node) const {
        if (node.op != VORM_OP::Until) {
            throwNoOperator(node.label);
        }
        return onOperands([&](const TimedTrace& condition, const TimedTrace& goal) {
            return untilWhileKnown(condition, goal, node.a, node.b);
        });
    }

    SharedPieces operator()(const cast_op& node) const {
        const auto target = static_cast<std::size_t>(node.target.which());
        return onOperand([&](const TimedTrace& x) { return converted(x, target); });
    }

    SharedPieces operator()(const binary_op& node) const {
        switch (node.op) {
            case VORM_OP::Plus:
                return onAlignedOperands(
                    [](const TimedTrace& l, const TimedTrace& r) { return l.Plus(r); });
            case VORM_OP::Minus:
                return onAlignedOperands(
                    [](const TimedTrace& l, const TimedTrace& r) { return l.Minus(r); });
            case VORM_OP::Multiply:
                return scaled(*operands_[0], *operands_[1]);
            case VORM_OP::And:
                return onAlignedOperands(
                    [](const TimedTrace& l, const TimedTrace& r) { return l.And(r); });
            case VORM_OP::Or:
                return onAlignedOperands(
                    [](const TimedTrace& l, const TimedTrace& r) { return l.Or(r); });
            default:
                return comparison(node);
        }
    }

    template <class Node>
    SharedPieces operator()(const Node&) const {
        throw AssessmentInternalException("There is no formula.");
    }

private:
    bool isRobustness() const { return meaning_ == Meaning::Robustness; }

    template <class Operation>
    SharedPieces onOperand(Operation operation) const {
        return onPieces(*operands_[0], operation);
    }

    template <class Operation>
    SharedPieces onOperands(Operation operation) const {
        return onPairs(*operands_[0], *operands_[1], operation);
    }

    template <class Operation>
    SharedPieces onAlignedOperands(Operation operation) const {
        return onOperands([&](const TimedTrace& left, const TimedTrace& right) {
            if (isRobustness() && isMixed(left, right)) {
                const ChangedTrace finiteLeft = withFiniteCertainty(left);
                const ChangedTrace finiteRight = withFiniteCertainty(right);
                return onAligned(changedOr(finiteLeft, left), changedOr(finiteRight, right),
                                 operation);
            }
            return onAligned(left, right, operation);
        });
    }

    SharedPieces comparison(const binary_op& node) const {
        if (roleOf(node.op) != NodeRole::Comparison) {
            throwNoOperator(node.label);
        }
        const auto operation = isRobustness() ? comparisonRobustness : compare;
        return onOperands([&](const TimedTrace& left, const TimedTrace& right) {
            return operation(node.op, left, right);
        });
    }

    [[noreturn]] static void throwNoOperator(const std::string& label) {
        throw AssessmentInternalException("'" + label + "' is no operator on these operands.");
    }

    Meaning meaning_;
    const std::vector<SharedPieces>& operands_;
    const SignalLookup& signals_;
};

}  // namespace

SharedPieces evaluateNode(const Expression& formula, Meaning meaning,
                          const std::vector<SharedPieces>& operands, const SignalLookup& signals) {
    if (meaning == Meaning::Robustness && roleOf(formula) == NodeRole::Term) {
        const TracePieces& pieces = *operands[0];
        const bool isTruth = !pieces.empty() && pieces.front().which() == int{valueTypeIndex<bool>};
        return isTruth ? onPieces(pieces, asCertainty) : operands[0];
    }
    return boost::apply_visitor(NodeEvaluation(meaning, operands, signals),
                                detail::withoutAliases(formula));
}

}  // namespace vorm::evaluation
