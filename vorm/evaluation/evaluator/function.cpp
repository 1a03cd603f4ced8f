#include "function.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/assessments/trace/value_traits.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace vorm::evaluation {

using namespace assessments;

namespace {

double signOf(double number) {
    return number > 0 ? 1 : number < 0 ? -1 : number;
}

struct Named {
    VORM_OP op;
    double (*function)(double);
};

constexpr std::array functions = std::to_array<Named>({
    {VORM_OP::SquareRoot, [](double x) { return std::sqrt(x); }},
    {VORM_OP::Exponential, [](double x) { return std::exp(x); }},
    {VORM_OP::Logarithm, [](double x) { return std::log(x); }},
    {VORM_OP::Sine, [](double x) { return std::sin(x); }},
    {VORM_OP::Cosine, [](double x) { return std::cos(x); }},
    {VORM_OP::Round, [](double x) { return std::round(x); }},
    {VORM_OP::Floor, [](double x) { return std::floor(x); }},
    {VORM_OP::Ceiling, [](double x) { return std::ceil(x); }},
    {VORM_OP::Sign, signOf},
});

static_assert(support::coversAll(functions, {support::OperatorFamily::Function}));

double (*functionFor(VORM_OP op))(double) {
    return std::find_if(functions.begin(), functions.end(),
                        [op](const Named& each) { return each.op == op; })
        ->function;
}

// The trace of each value; the times stay.
template <class T, class Function>
TimedTrace_T<T> onValues(const TimedTrace_T<T>& held, Function function) {
    TimedTrace_T<T> result(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<T> output(result);
    for (const TimedPoint<T>& point : held.points) {
        output.append({point.time, function(point.value)});
    }
    result.lastKnownTime = held.lastKnownTime;
    return result;
}

}  // namespace

void requireHeldFor(VORM_OP op, const TimedTrace& trace) {
    if (!isLine(trace)) {
        return;
    }
    const bool isSum = support::familyOf(op) == support::OperatorFamily::Sum;
    throw AssessmentInternalException(isSum ? "The integral of a line is no line."
                                            : "Of a line this function makes no line.");
}

TimedTrace functionOf(VORM_OP op, const TimedTrace& trace) {
    requireHeldFor(op, trace);
    const auto function = functionFor(op);
    return trace.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (IsFloatingPoint<T>::value) {
            return onValues(typed, [&](const T& value) {
                return support::fromDouble(function(support::toDouble(value)), value);
            });
        }
        throw AssessmentTypeException(typed.errorType());
    });
}

TimedTrace powerOf(const TimedTrace& base, const TimedTrace& exponent) {
    requireHeldFor(VORM_OP::Power, base);
    requireHeldFor(VORM_OP::Power, exponent);
    return base.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (IsFloatingPoint<T>::value) {
            return typed.Function(exponent.get<T>(), [](const T& x, const T& y) {
                return support::fromDouble(std::pow(support::toDouble(x), support::toDouble(y)), x);
            });
        }
        throw AssessmentTypeException(typed.errorType());
    });
}

}  // namespace vorm::evaluation
