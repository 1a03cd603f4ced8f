#include "conversion.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>

#include <boost/mp11/algorithm.hpp>

#include <cmath>
#include <limits>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

namespace {

template <class To>
To saturatedInteger(double number) {
    // The upper limit of a wide type is no double, but the power of two after it is.
    const double rounded = std::round(number);
    const double limit = std::ldexp(1.0, std::numeric_limits<To>::digits);
    if (rounded >= limit) {
        return std::numeric_limits<To>::max();
    }
    const double lowest = static_cast<double>(std::numeric_limits<To>::lowest());
    return rounded <= lowest ? std::numeric_limits<To>::lowest() : static_cast<To>(rounded);
}

template <class To, class From>
To saturatedInteger(From number) requires std::is_integral_v<From> {
    if (std::in_range<To>(number)) {
        return static_cast<To>(number);
    }
    return number < 0 ? std::numeric_limits<To>::lowest() : std::numeric_limits<To>::max();
}

template <class To, class From>
To numberAs(const From& number) {
    if constexpr (std::is_same_v<From, bool>) {
        return numberAs<To>(int{number});
    } else if constexpr (IsFloatingPoint<From>::value) {
        const double real = support::toDouble(number);
        if constexpr (std::is_integral_v<To>) {
            return saturatedInteger<To>(real);
        } else if constexpr (std::is_same_v<To, ValueType<FixedPoint>>) {
            return To(FixedPoint(real));
        } else {
            return static_cast<To>(real);
        }
    } else if constexpr (std::is_integral_v<To>) {
        return saturatedInteger<To>(number);
    } else if constexpr (std::is_floating_point_v<To>) {
        return static_cast<To>(number);
    } else {
        return numberAs<To>(static_cast<double>(number));
    }
}

template <class To, class From>
TimedTrace_T<To> numbersAs(const TimedTrace_T<From>& trace, const Timeline& timeline) {
    const bool isLinear = trace.interpolation == INTERPOLATION_METHOD::LINEAR;
    if (isLinear && !IsFloatingPoint<To>::value) {
        throw AssessmentInternalException(
            "A linearly interpolated quantity cannot become an integer.");
    }
    constexpr bool hasNan = std::is_floating_point_v<To> || std::is_same_v<To, HalfFloat>;
    TimedTrace_T<To> result(trace.interpolation, -std::numeric_limits<double>::infinity());
    for (const TimedPoint<From>& point : trace.points) {
        if (point.time > trace.lastKnownTime) {
            break;
        }
        if (!hasNan && support::isNan(point.value)) {
            throw AssessmentInternalException("The NaN at " + timeline.timeAt(point.time).text() +
                                              " s has no value of that type.");
        }
        result.push_back({point.time, numberAs<To>(point.value), point.derivative});
    }
    result.lastKnownTime = trace.lastKnownTime;
    return result;
}

template <class To, class From>
TimedTrace convertedTo(const TimedTrace& trace, const TimedTrace_T<From>& typed,
                       const Timeline& timeline) {
    typed.throwExceptionIfEnum();
    if constexpr (std::is_same_v<To, From>) {
        return trace;
    } else if constexpr (std::is_same_v<To, Verdict>) {
        return trace.ConvertToResult();
    } else if constexpr (std::is_same_v<To, bool>) {
        throw AssessmentInternalException("Whether a number is not zero is truth.");
    } else if constexpr (std::is_same_v<From, Verdict>) {
        throw AssessmentTypeException(typed.errorType());
    } else {
        return numbersAs<To>(typed, timeline);
    }
}

}  // namespace

TimedTrace converted(const TimedTrace& trace, std::size_t target, const Timeline& timeline) {
    constexpr std::size_t typeCount = boost::mp11::mp_size<ValueTypes>::value;
    return trace.visit([&](const auto& typed) {
        return boost::mp11::mp_with_index<typeCount>(target, [&](auto index) {
            return convertedTo<boost::mp11::mp_at_c<ValueTypes, index>>(trace, typed, timeline);
        });
    });
}

ChangedTrace asDouble(const TimedTrace& trace) {
    if (trace.which() == int{valueTypeIndex<double>}) {
        return std::nullopt;
    }
    return converted(trace, valueTypeIndex<double>, Timeline(second));
}

}  // namespace vorm::evaluation
