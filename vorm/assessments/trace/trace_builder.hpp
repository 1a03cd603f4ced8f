#pragma once

// For what grows a trace sample by sample: push_back and every operator that builds a result.
// A builder remembers where the last two samples lie, which a deque only finds by arithmetic.

#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments::support {

/// Throws AssessmentException "TimeValueMustIncrease".
[[noreturn]] VORM_ASSESSMENTS_EXPORT void throwTimeValueMustIncrease();

/// Appends samples to a trace under the rules of TimedTrace_T::push_back. Nobody else may change
/// the trace's points for as long as its builder is in use.
template <class T>
class TraceBuilder {
public:
    explicit TraceBuilder(TimedTrace_T<T>& trace) : trace_(trace) {
        auto point = trace.points.end();
        if (point != trace.points.begin()) {
            last_ = &*--point;
        }
        if (point != trace.points.begin() && isLinear()) {
            previous_ = &*--point;
        }
    }

    [[gnu::always_inline]] void append(const TimedPoint<T>& point) {
        if (last_ == nullptr) [[unlikely]] {
            store(point);
        } else if (!(point.time > last_->time)) [[unlikely]] {
            throwTimeValueMustIncrease();
        } else if (isLinear()) {
            if constexpr (IsFloatingPoint<T>::value) {
                appendLinear(point);
            } else {
                detail::throwDerivativeOfDiscreteValue();
            }
        } else if (!sameValue(last_->valueAt(point.time), point.value)) {
            store(point);
        }
        trace_.lastKnownTime = point.time;
    }

private:
    bool isLinear() const { return trace_.interpolation == INTERPOLATION_METHOD::LINEAR; }

    [[gnu::always_inline]] void appendLinear(const TimedPoint<T>& point) {
        if (previous_ != nullptr && sameValue(previous_->valueAt(point.time), point.value)) {
            *last_ = point;
            return;
        }
        const double slope = last_->slopeTo(point);
        store(point);
        previous_->derivative = slope;
    }

    [[gnu::always_inline]] void store(const TimedPoint<T>& point) {
        trace_.points.push_back(point);
        previous_ = last_;
        last_ = &trace_.points.back();
    }

    TimedTrace_T<T>& trace_;
    TimedPoint<T>* last_ = nullptr;
    TimedPoint<T>* previous_ = nullptr;  // only of a linear trace
};

}  // namespace vorm::assessments::support
