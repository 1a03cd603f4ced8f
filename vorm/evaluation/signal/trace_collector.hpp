#pragma once

// Grows the pieces of one signal sample by sample.

#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <cmath>
#include <deque>
#include <limits>
#include <optional>

namespace vorm::evaluation {

/// How a sample stands to the one before it.
enum class SampleStep { First, Next, AfterHole, Again };

template <class T>
class TraceCollector {
public:
    explicit TraceCollector(assessments::INTERPOLATION_METHOD interpolation)
        : interpolation_(interpolation) {}

    /// A sample that stands Again at the time of the one before it takes its place.
    void add(SampleStep step, double time, const T& value) {
        // The last sample waits until none can take its place: a trace gives no sample back.
        if (step != SampleStep::Again) {
            flush();
        }
        if (step == SampleStep::First || step == SampleStep::AfterHole) {
            begin();
        }
        waiting_.emplace(assessments::TimedPoint<T>{time, value, 0});
    }

    /// The pieces; nothing is added after this.
    std::deque<assessments::TimedTrace_T<T>> take() {
        flush();
        return std::move(pieces_);
    }

    /// A held copy with other values. Where this collector is held and the values stay equal or
    /// unequal, it is as if it had taken all the samples itself.
    template <class U, class Conversion>
    TraceCollector<U> converted(const Conversion& conversion) const {
        TraceCollector<U> result(assessments::INTERPOLATION_METHOD::ZOH);
        for (const auto& piece : pieces_) {
            result.begin();
            for (const auto& point : piece.points) {
                result.builder_->append({point.time, conversion(point.value), 0});
            }
            result.pieces_.back().lastKnownTime = piece.lastKnownTime;
        }
        if (waiting_) {
            result.waiting_.emplace(
                assessments::TimedPoint<U>{waiting_->time, conversion(waiting_->value), 0});
        }
        return result;
    }

private:
    template <class U>
    friend class TraceCollector;

    void begin() {
        pieces_.emplace_back(interpolation_, -std::numeric_limits<double>::infinity());
        builder_.emplace(pieces_.back());
        endsFinite_ = false;
    }

    void flush() {
        if (waiting_) {
            appendWaiting();
            waiting_.reset();
        }
    }

    void appendWaiting() {
        if constexpr (assessments::IsFloatingPoint<T>::value) {
            if (interpolation_ == assessments::INTERPOLATION_METHOD::LINEAR) {
                appendLinear(*waiting_);
                return;
            }
        }
        builder_->append(*waiting_);
    }

    // No line leads to or from a value that is not finite: between such samples lies a piece of NaN
    // of its own, which shares the times of its ends with its neighbours until it is placed.
    void appendLinear(const assessments::TimedPoint<T>& point) {
        const bool isFinite = std::isfinite(assessments::support::toDouble(point.value));
        if (isFinite && endsFinite_) [[likely]] {
            builder_->append(point);
            return;
        }
        const bool isNan = assessments::support::isNan(point.value);
        if (!isEmpty()) {
            if (!endsNan()) {
                beginNan();
            }
            pieces_.back().lastKnownTime = point.time;
            if (isNan) {
                return;
            }
            begin();
        }
        builder_->append(point);
        endsFinite_ = isFinite;
        if (isNan) {
            markNan();
        }
    }

    bool isEmpty() const { return pieces_.back().points.empty(); }
    bool endsNan() const {
        return !isEmpty() && assessments::support::isNan(pieces_.back().points.back().value);
    }

    void beginNan() {
        const auto& last = pieces_.back().points.back();
        const T nan = assessments::support::fromDouble<T>(std::numeric_limits<double>::quiet_NaN(),
                                                          last.value);
        const double time = pieces_.back().lastKnownTime;
        begin();
        builder_->append({time, nan, 0});
        markNan();
    }

    // The slope of NaN is none either.
    void markNan() {
        pieces_.back().points.back().derivative = std::numeric_limits<double>::quiet_NaN();
    }

    assessments::INTERPOLATION_METHOD interpolation_;
    std::deque<assessments::TimedTrace_T<T>> pieces_;
    std::optional<assessments::support::TraceBuilder<T>> builder_;
    std::optional<assessments::TimedPoint<T>> waiting_;
    bool endsFinite_ = false;  // the piece in work, of a line
};

/// Takes the pieces over as those of a signal on that timeline. Throws InputError where it cannot
/// tell two samples apart, or is too coarse for whole ticks.
template <class T>
SharedPieces sharedPieces(std::deque<assessments::TimedTrace_T<T>> pieces,
                          const Timeline& timeline);

}  // namespace vorm::evaluation
