#include "expression_factory.hpp"

#include <vorm/assessments/expression/label_text.hpp>
#include <vorm/assessments/value_families.hpp>

#include <boost/uuid/random_generator.hpp>

namespace vorm::assessments {
namespace {

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
    if constexpr (support::isReal<T> || support::isHalf<T>) {
        return detail::numberText(static_cast<double>(value));
    } else if constexpr (support::isInteger<T>) {
        return std::to_string(value);
    } else if constexpr (support::isBool<T>) {
        return value ? "true" : "false";
    } else if constexpr (support::isFixedPoint<T>) {
        return value.get().text();
    } else if constexpr (support::isVerdict<T>) {
        return nameOf(value.get());
    } else {
        static_assert(support::isForgotten<T>, "A value type without a text.");
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

Expression ExpressionFactory::Variable(std::string name, const TimedTrace& trace) {
    return Variable(std::move(name), TimedTrace(trace));
}

Expression ExpressionFactory::Variable(std::string name, TimedTrace&& trace) {
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

// Each operation twice: with operands that are copied, and with operands that are moved in.

#define VORM_UNARY(Name, label)                                     \
    Expression ExpressionFactory::Name(const Expression& x) const { \
        return Name(Expression(x));                                 \
    }                                                               \
    Expression ExpressionFactory::Name(Expression&& x) const {      \
        return unary_op(VORM_OP::Name, std::move(x), label);        \
    }
VORM_UNARY(UnaryMinus, "-")
VORM_UNARY(Abs, "abs")
VORM_UNARY(Slope, "slope")
VORM_UNARY(Not, "~")
#undef VORM_UNARY

#define VORM_BINARY(Name, label)                                                                \
    Expression ExpressionFactory::Name(const Expression& left, const Expression& right) const { \
        return Name(Expression(left), Expression(right));                                       \
    }                                                                                           \
    Expression ExpressionFactory::Name(Expression&& left, Expression&& right) const {           \
        return binary_op(VORM_OP::Name, std::move(left), std::move(right), label);              \
    }
VORM_BINARY(Plus, "+")
VORM_BINARY(Minus, "-")
VORM_BINARY(Multiply, "*")
VORM_BINARY(Eq, "==")
VORM_BINARY(Neq, "~=")
VORM_BINARY(Lt, "<")
VORM_BINARY(Leq, "<=")
VORM_BINARY(Gt, ">")
VORM_BINARY(Geq, ">=")
VORM_BINARY(And, "&")
VORM_BINARY(Or, "|")
#undef VORM_BINARY

#define VORM_TIMED(Name)                                                         \
    Expression ExpressionFactory::Name(double time, const Expression& x) const { \
        return Name(time, Expression(x));                                        \
    }                                                                            \
    Expression ExpressionFactory::Name(double time, Expression&& x) const {      \
        return timed_unary_op(VORM_OP::Name, std::move(x), #Name, time);         \
    }
VORM_TIMED(Shift)
VORM_TIMED(EpsilonShift)
#undef VORM_TIMED

#define VORM_WINDOWED(Name)                                                             \
    Expression ExpressionFactory::Name(double a, double b, const Expression& x) const { \
        return Name(a, b, Expression(x));                                               \
    }                                                                                   \
    Expression ExpressionFactory::Name(double a, double b, Expression&& x) const {      \
        return timedwindow_unary_op(VORM_OP::Name, std::move(x), #Name, a, b);          \
    }
VORM_WINDOWED(Eventually)
VORM_WINDOWED(Globally)
VORM_WINDOWED(Once)
VORM_WINDOWED(Historically)
#undef VORM_WINDOWED

#define VORM_WINDOWED(Name)                                                                       \
    Expression ExpressionFactory::Name(const Expression& left, double a, double b,                \
                                       const Expression& right) const {                           \
        return Name(Expression(left), a, b, Expression(right));                                   \
    }                                                                                             \
    Expression ExpressionFactory::Name(Expression&& left, double a, double b, Expression&& right) \
        const {                                                                                   \
        return timedwindow_binary_op(VORM_OP::Name, std::move(left), std::move(right), #Name, a,  \
                                     b);                                                          \
    }
VORM_WINDOWED(Until)
VORM_WINDOWED(Since)
#undef VORM_WINDOWED

Expression ExpressionFactory::Implies(const Expression& a, const Expression& b) const {
    return Implies(Expression(a), Expression(b));
}

Expression ExpressionFactory::Implies(Expression&& a, Expression&& b) const {
    Expression body = Or(Not(a), Expression(b));
    return alias(std::move(body), std::move(a), "->", std::move(b));
}

Expression ExpressionFactory::Rise(double threshold, double distance, const Expression& x) {
    return Rise(threshold, distance, Expression(x));
}

Expression ExpressionFactory::Rise(double threshold, double distance, Expression&& x) {
    Expression limit = Constant(threshold);
    Expression body = Gt(Minus(Shift(distance, x), Expression(x)), Expression(limit));
    return alias(std::move(body), "(", std::move(x), " Rise [", 0, distance, "] ", std::move(limit),
                 ")");
}

Expression ExpressionFactory::Fall(double threshold, double distance, const Expression& x) {
    return Fall(threshold, distance, Expression(x));
}

Expression ExpressionFactory::Fall(double threshold, double distance, Expression&& x) {
    Expression limit = Constant(threshold);
    Expression body = Gt(Minus(Expression(x), Shift(distance, x)), Expression(limit));
    return alias(std::move(body), "(", std::move(x), " Fall [", 0, distance, "] ", std::move(limit),
                 ")");
}

}  // namespace vorm::assessments
