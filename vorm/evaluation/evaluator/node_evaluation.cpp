#include "node_evaluation.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/change.hpp>
#include <vorm/evaluation/evaluator/comparison.hpp>
#include <vorm/evaluation/evaluator/conversion.hpp>
#include <vorm/evaluation/evaluator/function.hpp>
#include <vorm/evaluation/evaluator/line_arithmetic.hpp>
#include <vorm/evaluation/evaluator/node_meaning.hpp>
#include <vorm/evaluation/evaluator/number_window.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/recorded_span.hpp>
#include <vorm/evaluation/evaluator/robustness.hpp>
#include <vorm/evaluation/evaluator/slope.hpp>
#include <vorm/evaluation/evaluator/step_line.hpp>
#include <vorm/evaluation/evaluator/temporal.hpp>
#include <vorm/evaluation/evaluator/window_sum.hpp>
#include <vorm/evaluation/time/window_end.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;
using support::familyOf;
using support::OperatorFamily;

namespace {

// The tag of a plain literal; all others are those of enumerations.
constexpr std::int32_t plainTag = 1;

Value shared(Truth truth) {
    return std::make_shared<const Truth>(std::move(truth));
}

// Truth of what is bool, the rest as it is.
Value valueOf(SharedPieces pieces) {
    const bool isBool = !pieces->empty() && pieces->front().which() == int{valueTypeIndex<bool>};
    return isBool ? shared(truthOf(*pieces)) : Value(std::move(pieces));
}

Value literalValue(const constantValue& literal) {
    TracePieces pieces{boost::apply_visitor(
        [&]<class T>(const T& value) -> TimedTrace {
            TimedTrace_T<T> constant(value);
            if (literal.tag != plainTag) {
                constant.enumTypeName = literal.name;
            }
            return constant;
        },
        literal.value)};
    return valueOf(std::make_shared<const TracePieces>(std::move(pieces)));
}

// Whether a formula's samples are rounded results; those of a signal that is only moved or
// converted are not.
bool isComputed(const Expression& formula) {
    const Expression* inner = &support::withoutAliases(formula);
    while (true) {
        if (const auto* moved = boost::get<timed_unary_op>(inner)) {
            inner = &support::withoutAliases(moved->child);
        } else if (const auto* cast = boost::get<cast_op>(inner)) {
            inner = &support::withoutAliases(cast->child);
        } else {
            return boost::get<variable>(inner) == nullptr &&
                   boost::get<constantValue>(inner) == nullptr;
        }
    }
}

// A line times a line is none, nor is what is divided by one.
void requireLineOf(VORM_OP op, const TracePieces& left, const TracePieces& right) {
    const bool isLeftLine = std::any_of(left.begin(), left.end(), isLine);
    const bool isRightLine = std::any_of(right.begin(), right.end(), isLine);
    if (op == VORM_OP::Multiply && isLeftLine && isRightLine) {
        throw AssessmentInternalException("The product of two lines is no line.");
    }
    if (op == VORM_OP::Divide && isRightLine) {
        throw AssessmentInternalException("What is divided by a line is no line.");
    }
}

class NodeEvaluation : public boost::static_visitor<Value> {
public:
    NodeEvaluation(const Expression& formula, Meaning meaning, const std::vector<Value>& operands,
                   const SignalLookup& signals, const Timeline& timeline)
        : formula_(formula),
          timeline_(timeline),
          meaning_(meaning),
          operands_(operands),
          signals_(signals),
          isLogical_(meaning == Meaning::Boolean &&
                     std::any_of(operands.begin(), operands.end(), isTruth)) {}

    Value operator()(const constantValue& node) const { return literalValue(node); }
    Value operator()(const variable& node) const { return valueOf(signals_(node)); }

    Value operator()(const unary_op& node) const {
        struct Operation {
            VORM_OP op;
            Value (NodeEvaluation::*evaluate)(const unary_op&) const;
        };
        static constexpr std::array operations = std::to_array<Operation>({
            {VORM_OP::Not, &NodeEvaluation::negation},
            {VORM_OP::UnaryMinus, &NodeEvaluation::opposite},
            {VORM_OP::Abs, &NodeEvaluation::absolute},
            {VORM_OP::Slope, &NodeEvaluation::slope},
            {VORM_OP::Changed, &NodeEvaluation::changes},
        });
        static_assert(support::coversAll(
            operations,
            {OperatorFamily::Negation, OperatorFamily::Numeric, OperatorFamily::Change}));
        if (familyOf(node.op) == OperatorFamily::Edge) {
            return edge(node.op == VORM_OP::Rises);
        }
        if (familyOf(node.op) == OperatorFamily::Function) {
            return onOperand([&](const TimedTrace& x) { return functionOf(node.op, x); });
        }
        for (const Operation& operation : operations) {
            if (operation.op == node.op) {
                return (this->*operation.evaluate)(node);
            }
        }
        throwNoOperator(node.label);
    }

    Value operator()(const timed_unary_op& node) const {
        if (node.op == VORM_OP::EpsilonShift) {
            return epsilonShift(node.offset);
        }
        require(node, OperatorFamily::Shift);
        return isLogical_
                   ? shared(truth(0)->Shift(node.offset, false))
                   : onOperand([&](const TimedTrace& x) { return shiftedFreely(x, node.offset); });
    }

    Value operator()(const timedwindow_unary_op& node) const {
        if (familyOf(node.op) == OperatorFamily::Sum) {
            return onOperand([&](const TimedTrace& x) {
                return windowSum(node.op, node.a, node.b, x, timeline_);
            });
        }
        if (familyOf(node.op) == OperatorFamily::NumberWindow) {
            return numberWindow(node.op, node.a, node.b, *pieces(0));
        }
        require(node, OperatorFamily::Window);
        const double end = endOf(node);
        if (!isLogical_ && !isRobustness(meaning_)) {
            return numberWindow(node.op, node.a, end, *pieces(0));
        }
        const Value p = node.b == toTheEnd ? upToTheEnd(node.op, operands_[0]) : operands_[0];
        if (isLogical_) {
            return shared(windowOn(node.op, node.a, end, *asTruth(p)));
        }
        return onPieces(*asPieces(p),
                        [&](const TimedTrace& x) { return windowOn(node.op, node.a, end, x); });
    }

    Value operator()(const timedwindow_binary_op& node) const {
        require(node, OperatorFamily::Until);
        requireSameType(operands_[0], operands_[1]);
        const double end = endOf(node);
        const Value goal = node.b == toTheEnd ? upToTheEnd(node.op, operands_[1]) : operands_[1];
        if (!isRobustness(meaning_)) {
            return shared(untilOn(node.op, node.a, end, *truth(0), *asTruth(goal)));
        }
        return onPairs(*pieces(0), *asPieces(goal), [&](const TimedTrace& l, const TimedTrace& r) {
            return untilOn(node.op, node.a, end, l, r);
        });
    }

    Value operator()(const cast_op& node) const {
        const auto target = static_cast<std::size_t>(node.target.which());
        if (target != valueTypeIndex<bool>) {
            return onOperand([&](const TimedTrace& x) { return converted(x, target, timeline_); });
        }
        return isLogical_ ? operands_[0] : shared(isNotZero({*pieces(0), isComputed(node.child)}));
    }

    Value operator()(const binary_op& node) const {
        switch (familyOf(node.op)) {
            case OperatorFamily::Arithmetic:
                return arithmeticOn(node);
            case OperatorFamily::Comparison:
                return comparison(node);
            case OperatorFamily::Connective:
                static_assert(
                    support::consistsOf(OperatorFamily::Connective, {VORM_OP::And, VORM_OP::Or}));
                return node.op == VORM_OP::And
                           ? logic([](const auto& l, const auto& r) { return l.And(r); })
                           : logic([](const auto& l, const auto& r) { return l.Or(r); });
            case OperatorFamily::Implication:
                return implication();
            case OperatorFamily::Extremum:
                return onAlignedOperands([&](const TimedTrace& l, const TimedTrace& r) {
                    return node.op == VORM_OP::Minimum ? l.And(r) : l.Or(r);
                });
            case OperatorFamily::Power:
                requireSameType(operands_[0], operands_[1]);
                return onPairs(*pieces(0), *pieces(1), powerOf);
            case OperatorFamily::None:
            case OperatorFamily::Cast:
            case OperatorFamily::Numeric:
            case OperatorFamily::Function:
            case OperatorFamily::Change:
            case OperatorFamily::Negation:
            case OperatorFamily::Edge:
            case OperatorFamily::NumberWindow:
            case OperatorFamily::Sum:
            case OperatorFamily::Window:
            case OperatorFamily::Until:
            case OperatorFamily::Shift:
            case OperatorFamily::EpsilonShift:
                break;
        }
        throwNoOperator(node.label);
    }

    template <class Node>
    Value operator()(const Node&) const {
        throw AssessmentInternalException("There is no formula.");
    }

private:
    SharedTruth truth(std::size_t operand) const { return asTruth(operands_[operand]); }
    SharedPieces pieces(std::size_t operand) const { return asPieces(operands_[operand]); }

    static std::pair<SharedPieces, SharedPieces> aligned(const SharedPieces& left,
                                                         const SharedPieces& right) {
        return {withNanApart(left, *right), withNanApart(right, *left)};
    }
    std::pair<SharedPieces, SharedPieces> alignedPieces() const {
        return aligned(pieces(0), pieces(1));
    }

    template <class Operation>
    Value onOperand(Operation operation) const {
        return onPieces(*pieces(0), operation);
    }

    template <class Operation>
    Value onAlignedOperands(Operation operation) const {
        requireSameType(operands_[0], operands_[1]);
        return onAlignedPieces(pieces(0), pieces(1), operation);
    }

    template <class Operation>
    Value onAlignedPieces(const SharedPieces& left, const SharedPieces& right,
                          Operation operation) const {
        const auto [l, r] = aligned(left, right);
        return onPairs(*l, *r, [&](const TimedTrace& x, const TimedTrace& y) {
            return isRobustness(meaning_) ? onFinite(x, y, operation) : onAligned(x, y, operation);
        });
    }

    // The premise is negated before anything: certainty beside lines must not be.
    Value implication() const {
        requireSameType(operands_[0], operands_[1]);
        if (!isRobustness(meaning_)) {
            return shared(truth(0)->UMinus().Or(*truth(1)));
        }
        const SharedPieces premise =
            onPieces(*pieces(0), [](const TimedTrace& x) { return x.UnaryMinus(); });
        return onAlignedPieces(premise, pieces(1),
                               [](const TimedTrace& l, const TimedTrace& r) { return l.Or(r); });
    }

    template <class Operation>
    Value logic(Operation operation) const {
        if (!isLogical_) {
            return onAlignedOperands(operation);
        }
        requireSameType(operands_[0], operands_[1]);
        return shared(operation(*truth(0), *truth(1)));
    }

    template <class Node>
    static double endOf(const Node& node) {
        return node.b == toTheEnd ? support::infinity : node.b;
    }

    // An operand as a window that ends with the recording sees it: what lies beyond decides
    // nothing.
    Value upToTheEnd(VORM_OP op, const Value& operand) const {
        const Truth within = truthWithin(lookedAtUpToTheEnd(formula_, op, signals_));
        const bool isForSomeTime =
            familyOf(op) == OperatorFamily::Until || support::isForSomeTime(op);
        if (isTruth(operand)) {
            const Truth& p = *asTruth(operand);
            return shared(isForSomeTime ? p.And(within) : p.Or(within.UMinus()));
        }
        const SharedPieces limit =
            certainty(isForSomeTime ? within : within.UMinus(), openAs(meaning_));
        return onPieces(*asPieces(operand), [&](const TimedTrace& x) {
            return onFinite(x, limit->front(), [&](const TimedTrace& l, const TimedTrace& r) {
                return isForSomeTime ? l.And(r) : l.Or(r);
            });
        });
    }

    Value epsilonShift(double direction) const {
        if (isLogical_) {
            return shared(epsilonShifted(*truth(0), direction));
        }
        return onOperand([&](const TimedTrace& x) {
            return isRobustness(meaning_) && direction >= 0 ? justBefore(x, *truth(1))
                                                            : x.EpsilonShift(direction);
        });
    }

    // What is now, and the negation of what was just before; or the other way round. What is not
    // negated is the first operand, what is the second one.
    Value edge(bool rises) const {
        if (!isRobustness(meaning_)) {
            const SharedTruth now = truth(0);
            const Truth before = epsilonShifted(*now, 1);
            return shared(rises ? now->And(before.UMinus()) : now->UMinus().And(before));
        }
        const auto before = [&](const TimedTrace& x) { return justBefore(x, *truth(2)); };
        return onPairs(
            *pieces(0), *pieces(1), [&](const TimedTrace& x, const TimedTrace& negatedX) {
                const TimedTrace no = negatedX.UnaryMinus();
                return onFinite(rises ? x : before(x), rises ? before(negatedX).UnaryMinus() : no,
                                [](const TimedTrace& l, const TimedTrace& r) { return l.And(r); });
            });
    }

    Value negation(const unary_op& node) const {
        return isRobustness(meaning_) ? opposite(node) : shared(truth(0)->UMinus());
    }
    Value opposite(const unary_op&) const {
        return onOperand([](const TimedTrace& x) { return x.UnaryMinus(); });
    }
    Value absolute(const unary_op& node) const {
        return magnitude(*pieces(0), isComputed(node.child));
    }
    Value changes(const unary_op&) const { return shared(changesOf(*pieces(0))); }
    Value slope(const unary_op&) const {
        return onOperand([&](const TimedTrace& x) { return slopePerSecond(x, timeline_); });
    }

    Value arithmeticOn(const binary_op& node) const {
        requireSameType(operands_[0], operands_[1]);
        requireLineOf(node.op, *pieces(0), *pieces(1));
        const auto [left, right] = alignedPieces();
        return arithmetic(node.op, *left, *right);
    }

    Value comparison(const binary_op& node) const {
        requireSameType(operands_[0], operands_[1]);
        const auto [left, right] =
            isRobustness(meaning_) ? alignedPieces() : std::pair(pieces(0), pieces(1));
        const Compared l{*left, isComputed(node.lhs)};
        const Compared r{*right, isComputed(node.rhs)};
        return isRobustness(meaning_) ? comparisonRobustness(node.op, l, r, openAs(meaning_))
                                      : shared(compare(node.op, l, r));
    }

    template <class Node>
    static void require(const Node& node, OperatorFamily family) {
        if (familyOf(node.op) != family) {
            throwNoOperator(node.label);
        }
    }

    [[noreturn]] static void throwNoOperator(const std::string& label) {
        throw AssessmentInternalException("'" + label + "' is no operator on these operands.");
    }

    const Expression& formula_;
    const Timeline& timeline_;
    Meaning meaning_;
    const std::vector<Value>& operands_;
    const SignalLookup& signals_;
    const bool isLogical_;  // whether truth is made of truth
};

}  // namespace

Value evaluateNode(const Expression& formula, Meaning meaning, const std::vector<Value>& operands,
                   const SignalLookup& signals, const Timeline& timeline) {
    if (isRobustness(meaning) && roleOf(formula) == NodeRole::Term) {
        return isTruth(operands[0]) ? certainty(*asTruth(operands[0]), openAs(meaning))
                                    : operands[0];
    }
    return boost::apply_visitor(NodeEvaluation(formula, meaning, operands, signals, timeline),
                                support::withoutAliases(formula));
}

}  // namespace vorm::evaluation
