// The integral and the count of stretches over a sliding window. What lies in a window is the
// difference of two sums from the trace's begin; both change where a sample enters or leaves.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/assessments/value_families.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace vorm::assessments {
namespace {

void requireFiniteWidth(double width) {
    detail::requireWindowWidth(width);
    if (!std::isfinite(width)) {
        throw AssessmentInternalException("A sum over a window needs one that ends.");
    }
}

// The starts of the windows that lie within what is known; nothing where none does.
struct Starts {
    double first;
    double last;
};

template <class T>
std::optional<Starts> startsOf(const TimedTrace_T<T>& trace, double width) {
    if (trace.points.empty() || !(trace.points.front().time <= trace.lastKnownTime - width)) {
        return std::nullopt;
    }
    return Starts{trace.points.front().time, trace.lastKnownTime - width};
}

// Calls visit(start, ends, begins) for each window start at which a change enters the window, or
// one leaves it: with how many have left and entered by then. The starts come in order, and the
// first and the last one, where they are finite, are among them.
template <class Visit>
void slide(const std::vector<double>& leaving, const std::vector<double>& entering, double width,
           const Starts& starts, Visit visit) {
    std::size_t left = 0;
    std::size_t entered = 0;
    double start = starts.first;
    while (true) {
        while (left < leaving.size() && leaving[left] <= start) {
            ++left;
        }
        while (entered < entering.size() && entering[entered] - width <= start) {
            ++entered;
        }
        visit(start, left, entered);
        double next = starts.last;
        if (left < leaving.size()) {
            next = std::min(next, leaving[left]);
        }
        if (entered < entering.size()) {
            next = std::min(next, entering[entered] - width);
        }
        if (!(start < next) || std::isinf(next)) {
            return;
        }
        start = next;
    }
}

// The sum up to any time, from the changes of a held number.
class RunningSum {
public:
    RunningSum(std::vector<double> times, std::vector<double> values)
        : times_(std::move(times)), values_(std::move(values)), sums_(times_.size()) {
        // What never began counts from where it changes first.
        if (std::isinf(times_.front())) {
            times_.front() = times_.size() > 1 ? times_[1] : 0;
        }
        for (std::size_t i = 1; i < times_.size(); ++i) {
            sums_[i] = sums_[i - 1] +
                       (static_cast<long double>(times_[i]) - times_[i - 1]) * values_[i - 1];
        }
    }

    /// At a time at which that many of the changes have been.
    long double at(long double time, std::size_t passed) const {
        const std::size_t i = passed == 0 ? 0 : passed - 1;
        return sums_[i] + (time - times_[i]) * values_[i];
    }

    double firstValue() const { return values_.front(); }

private:
    std::vector<double> times_;
    std::vector<double> values_;
    std::vector<long double> sums_;
};

template <class T>
double finiteNumber(const T& value) {
    const double number = support::toDouble(value);
    if (!std::isfinite(number)) {
        throw AssessmentInternalException("A NaN or an infinite number has no integral.");
    }
    return number;
}

template <class T>
TimedTrace_T<double> integralOf(const TimedTrace_T<T>& trace, double width) {
    TimedTrace_T<double> result(INTERPOLATION_METHOD::LINEAR, -support::infinity);
    const std::optional<Starts> starts = startsOf(trace, width);
    if (!starts) {
        return result;
    }
    std::vector<double> times;
    std::vector<double> values;
    const auto end = support::samplesUpTo(trace, trace.lastKnownTime);
    for (auto point = trace.points.begin(); point != end; ++point) {
        times.push_back(point->time);
        values.push_back(finiteNumber(point->value));
    }
    const RunningSum sum(times, std::move(values));
    support::TraceBuilder<double> output(result);
    slide(times, times, width, *starts, [&](double start, std::size_t left, std::size_t entered) {
        const long double last = static_cast<long double>(start) + width;
        const long double inWindow = std::isinf(start)
                                         ? static_cast<long double>(sum.firstValue()) * width
                                         : sum.at(last, entered) - sum.at(start, left);
        output.append({start, static_cast<double>(inWindow)});
    });
    result.lastKnownTime = starts->last;
    return result;
}

TimedTrace_T<std::int32_t> countOf(const TimedTrace_T<bool>& trace, double width) {
    TimedTrace_T<std::int32_t> result(INTERPOLATION_METHOD::ZOH, -support::infinity);
    const std::optional<Starts> starts = startsOf(trace, width);
    if (!starts) {
        return result;
    }
    std::vector<double> begins;
    std::vector<double> ends;
    const auto end = support::samplesUpTo(trace, trace.lastKnownTime);
    bool wasTrue = false;
    for (auto point = trace.points.begin(); point != end; ++point) {
        if (point->value != wasTrue) {
            (point->value ? begins : ends).push_back(point->time);
        }
        wasTrue = point->value;
    }
    support::TraceBuilder<std::int32_t> output(result);
    slide(ends, begins, width, *starts, [&](double start, std::size_t left, std::size_t entered) {
        output.append({start, static_cast<std::int32_t>(entered - left)});
    });
    result.lastKnownTime = starts->last;
    return result;
}

}  // namespace

template <class T>
TimedTrace_T<double> TimedTrace_T<T>::Integral(const double& width) const {
    throwExceptionIfEnum();
    requireFiniteWidth(width);
    if constexpr (support::isVerdict<T>) {
        throw AssessmentTypeException(errorType());
    } else {
        detail::requireHeld(*this);
        return integralOf(*this, width);
    }
}

template <class T>
TimedTrace_T<std::int32_t> TimedTrace_T<T>::Count(const double& width) const {
    throwExceptionIfEnum();
    requireFiniteWidth(width);
    if constexpr (support::isBool<T>) {
        return countOf(*this, width);
    } else {
        throw AssessmentTypeException(errorType());
    }
}

#define VORM_VALUE_TYPE(T)                                                        \
    template TimedTrace_T<double> TimedTrace_T<T>::Integral(const double&) const; \
    template TimedTrace_T<std::int32_t> TimedTrace_T<T>::Count(const double&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
