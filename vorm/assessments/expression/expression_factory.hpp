#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/uuid/uuid.hpp>

#include <string>
#include <utility>

namespace vorm::assessments {

/// Builds formulas: each operation gives the node that it is named after, with its code and its
/// label. It also keeps the traces of the leaves that it made.
///
/// Operands of any kind are accepted and bounds are stored as they are; what does not fit together
/// shows when the formula is evaluated. Only a tree of too many levels is refused at once, with
/// AssessmentInternalException. Operands are copied; where all those of an operation are moved in,
/// or are results of other operations, they cost a constant time however large they are. Implies,
/// Rise and Fall copy their operands in any case, once for the body and once for the text, so that
/// implications nested k deep have 2^k times the nodes.
class VORM_ASSESSMENTS_EXPORT ExpressionFactory {
public:
    /// A new signal: its id is drawn from the random source of the operating system. Throws
    /// boost::uuids::entropy_error where that fails; the factory is unchanged then.
    Expression Variable(std::string name) const;
    /// The signal of that id.
    Expression Variable(std::string name, boost::uuids::uuid id) const;
    /// A new signal with its trace. Throws as Variable(name) does.
    Expression Variable(std::string name, const TimedTrace& trace);
    Expression Variable(std::string name, TimedTrace&& trace);

    /// A literal of any value type, and the constant trace that belongs to it. Its label is the
    /// value as a stream writes it, without locale: six digits for `double`, `float` and
    /// HalfFloat, "true" and "false", the exact decimal of a FixedPoint, the name of a verdict.
    template <class T>
    requires boost::mp11::mp_contains<ValueTypes, T>::value Expression
    Constant(T value, std::string name = {});

    Expression UnaryMinus(const Expression& x) const;
    Expression UnaryMinus(Expression&& x) const;
    Expression Abs(const Expression& x) const;
    Expression Abs(Expression&& x) const;
    Expression Slope(const Expression& x) const;
    Expression Slope(Expression&& x) const;
    Expression Not(const Expression& x) const;
    Expression Not(Expression&& x) const;

    Expression Plus(const Expression& left, const Expression& right) const;
    Expression Plus(Expression&& left, Expression&& right) const;
    Expression Minus(const Expression& left, const Expression& right) const;
    Expression Minus(Expression&& left, Expression&& right) const;
    Expression Multiply(const Expression& left, const Expression& right) const;
    Expression Multiply(Expression&& left, Expression&& right) const;
    Expression Eq(const Expression& left, const Expression& right) const;
    Expression Eq(Expression&& left, Expression&& right) const;
    Expression Neq(const Expression& left, const Expression& right) const;
    Expression Neq(Expression&& left, Expression&& right) const;
    Expression Lt(const Expression& left, const Expression& right) const;
    Expression Lt(Expression&& left, Expression&& right) const;
    Expression Leq(const Expression& left, const Expression& right) const;
    Expression Leq(Expression&& left, Expression&& right) const;
    Expression Gt(const Expression& left, const Expression& right) const;
    Expression Gt(Expression&& left, Expression&& right) const;
    Expression Geq(const Expression& left, const Expression& right) const;
    Expression Geq(Expression&& left, Expression&& right) const;
    Expression And(const Expression& left, const Expression& right) const;
    Expression And(Expression&& left, Expression&& right) const;
    Expression Or(const Expression& left, const Expression& right) const;
    Expression Or(Expression&& left, Expression&& right) const;

    /// x at some time of the closed window [t + a, t + b].
    Expression Eventually(double a, double b, const Expression& x) const;
    Expression Eventually(double a, double b, Expression&& x) const;
    /// x throughout the closed window [t + a, t + b].
    Expression Globally(double a, double b, const Expression& x) const;
    Expression Globally(double a, double b, Expression&& x) const;
    /// x at t + distance.
    Expression Shift(double distance, const Expression& x) const;
    Expression Shift(double distance, Expression&& x) const;
    /// x one representable time earlier, or later for a negative or NaN direction.
    Expression EpsilonShift(double direction, const Expression& x) const;
    Expression EpsilonShift(double direction, Expression&& x) const;
    Expression Until(const Expression& left, double a, double b, const Expression& right) const;
    Expression Until(Expression&& left, double a, double b, Expression&& right) const;
    /// x at some time of the closed window [t - b, t - a].
    Expression Once(double a, double b, const Expression& x) const;
    Expression Once(double a, double b, Expression&& x) const;
    /// x throughout the closed window [t - b, t - a].
    Expression Historically(double a, double b, const Expression& x) const;
    Expression Historically(double a, double b, Expression&& x) const;
    /// `right` at some time of [t - b, t - a] and `left` from there on.
    Expression Since(const Expression& left, double a, double b, const Expression& right) const;
    Expression Since(Expression&& left, double a, double b, Expression&& right) const;

    /// An alias of Or(Not(a), b) that prints as `a->b`.
    Expression Implies(const Expression& a, const Expression& b) const;
    Expression Implies(Expression&& a, Expression&& b) const;
    /// Whether x is greater by more than `threshold` after `distance`: an alias of
    /// Gt(Minus(Shift(distance, x), x), threshold) that prints as `(x Rise [0distance] threshold)`.
    Expression Rise(double threshold, double distance, const Expression& x);
    Expression Rise(double threshold, double distance, Expression&& x);
    /// Whether x is smaller by more than `threshold` after `distance`; else as Rise.
    Expression Fall(double threshold, double distance, const Expression& x);
    Expression Fall(double threshold, double distance, Expression&& x);

    /// The traces of the leaves.
    const ExpressionTraces& getTraces() const { return traces_; }

private:
    ExpressionTraces traces_;
};

}  // namespace vorm::assessments
