#include "expression_factory.hpp"

#include <vorm/assessments/expression/number_text.hpp>

#include <boost/uuid/random_generator.hpp>

namespace vorm::assessments {
namespace {

Expression unary(VORM_OP op, Expression& x, const char* label) {
    return unary_op(op, std::move(x), label);
}

Expression binary(VORM_OP op, Expression& left, Expression& right, const char* label) {
    return binary_op(op, std::move(left), std::move(right), label);
}

const char* nameOf(resultEnum_t verdict) {
    switch (verdict) {
        case resultEnum_t::PASS:
            return "PASS";
        case resultEnum_t::FAIL:
            return "FAIL";
        case resultEnum_t::NO_RESULT:
            break;
    }
    return "NO_RESULT";
}

template <class T>
std::string literalText(const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return value ? "true" : "false";
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return nameOf(value.get());
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return value.get().text();
    } else if constexpr (IsFloatingPoint<T>::value) {
        return detail::numberText(detail::toDouble(value));
    } else {
        return std::to_string(value);
    }
}

// The tag of a literal.
constexpr std::int32_t literal = 1;

}  // namespace

Expression ExpressionFactory::Variable(std::string name) const {
    return Variable(std::move(name), boost::uuids::random_generator_pure()());
}

Expression ExpressionFactory::Variable(std::string name, boost::uuids::uuid id) const {
    return variable(std::move(name), id);
}

Expression ExpressionFactory::Variable(std::string name, TimedTrace trace) {
    Expression signal = Variable(std::move(name));
    traces_.insert_or_assign(signal, std::move(trace));
    return signal;
}

template <class T>
requires boost::mp11::mp_contains<ValueTypes, T>::value Expression
ExpressionFactory::Constant(T value, std::string name) {
    Expression constant = constantValue(literal, literalText(value), value, std::move(name));
    traces_.insert_or_assign(constant, TimedTrace_T<T>(value));
    return constant;
}

#define VORM_VALUE_TYPE(T)                                                           \
    template VORM_ASSESSMENTS_EXPORT Expression ExpressionFactory::Constant(T value, \
                                                                            std::string name);
#include <vorm/assessments/value_types.def>

Expression ExpressionFactory::UnaryMinus(Expression x) const {
    return unary(VORM_OP::UnaryMinus, x, "-");
}

Expression ExpressionFactory::Abs(Expression x) const {
    return unary(VORM_OP::Abs, x, "abs");
}

Expression ExpressionFactory::Slope(Expression x) const {
    return unary(VORM_OP::Slope, x, "slope");
}

Expression ExpressionFactory::Not(Expression x) const {
    return unary(VORM_OP::Not, x, "~");
}

Expression ExpressionFactory::Plus(Expression left, Expression right) const {
    return binary(VORM_OP::Plus, left, right, "+");
}

Expression ExpressionFactory::Minus(Expression left, Expression right) const {
    return binary(VORM_OP::Minus, left, right, "-");
}

Expression ExpressionFactory::Multiply(Expression left, Expression right) const {
    return binary(VORM_OP::Multiply, left, right, "*");
}

Expression ExpressionFactory::Eq(Expression left, Expression right) const {
    return binary(VORM_OP::Eq, left, right, "==");
}

Expression ExpressionFactory::Neq(Expression left, Expression right) const {
    return binary(VORM_OP::Neq, left, right, "~=");
}

Expression ExpressionFactory::Lt(Expression left, Expression right) const {
    return binary(VORM_OP::Lt, left, right, "<");
}

Expression ExpressionFactory::Leq(Expression left, Expression right) const {
    return binary(VORM_OP::Leq, left, right, "<=");
}

Expression ExpressionFactory::Gt(Expression left, Expression right) const {
    return binary(VORM_OP::Gt, left, right, ">");
}

Expression ExpressionFactory::Geq(Expression left, Expression right) const {
    return binary(VORM_OP::Geq, left, right, ">=");
}

Expression ExpressionFactory::And(Expression left, Expression right) const {
    return binary(VORM_OP::And, left, right, "&");
}

Expression ExpressionFactory::Or(Expression left, Expression right) const {
    return binary(VORM_OP::Or, left, right, "|");
}

Expression ExpressionFactory::Eventually(double a, double b, Expression x) const {
    return timedwindow_unary_op(VORM_OP::Eventually, std::move(x), "Eventually", a, b);
}

Expression ExpressionFactory::Globally(double a, double b, Expression x) const {
    return timedwindow_unary_op(VORM_OP::Globally, std::move(x), "Globally", a, b);
}

Expression ExpressionFactory::Shift(double distance, Expression x) const {
    return timed_unary_op(VORM_OP::Shift, std::move(x), "Shift", distance);
}

Expression ExpressionFactory::EpsilonShift(double direction, Expression x) const {
    return timed_unary_op(VORM_OP::EpsilonShift, std::move(x), "EpsilonShift", direction);
}

Expression ExpressionFactory::Until(Expression left, double a, double b, Expression right) const {
    return timedwindow_binary_op(VORM_OP::Until, std::move(left), std::move(right), "Until", a, b);
}

Expression ExpressionFactory::Implies(Expression a, Expression b) const {
    Expression body = Or(Not(a), b);
    return alias(std::move(body), std::move(a), "->", std::move(b));
}

Expression ExpressionFactory::Rise(double threshold, double distance, Expression x) {
    Expression limit = Constant(threshold);
    Expression body = Gt(Minus(Shift(distance, x), x), limit);
    return alias(std::move(body), "(", std::move(x), " Rise [", 0, distance, "] ", std::move(limit),
                 ")");
}

Expression ExpressionFactory::Fall(double threshold, double distance, Expression x) {
    Expression limit = Constant(threshold);
    Expression body = Gt(Minus(x, Shift(distance, x)), limit);
    return alias(std::move(body), "(", std::move(x), " Fall [", 0, distance, "] ", std::move(limit),
                 ")");
}

}  // namespace vorm::assessments
