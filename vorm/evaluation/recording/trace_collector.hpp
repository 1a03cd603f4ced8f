#pragma once

// Grows the pieces of one signal sample by sample.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/evaluation/signal/signal.hpp>

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

    // No line leads to or from a value that is not finite: there the signal is NaN right after its
    // last sample, which alone keeps its value.
    void appendLinear(const assessments::TimedPoint<T>& point) {
        auto& piece = pieces_.back();
        const bool isFinite = std::isfinite(assessments::detail::toDouble(point.value));
        if (!piece.points.empty() && !(isFinite && endsFinite(piece))) {
            breakLine(piece, point.time);
        }
        if (isFinite) {
            builder_->append(point);
        } else {
            storeBeyondLines(piece, point);
        }
    }

    static bool endsFinite(const assessments::TimedTrace_T<T>& piece) {
        return std::isfinite(assessments::detail::toDouble(piece.points.back().value));
    }

    void breakLine(assessments::TimedTrace_T<T>& piece, double end) {
        const double time = assessments::detail::nextTime(piece.points.back().time);
        if (time < end) {
            const T nan = assessments::detail::fromDouble<T>(
                std::numeric_limits<double>::quiet_NaN(), piece.points.back().value);
            storeBeyondLines(piece, {time, nan, 0});
        }
    }

    // The builder would take a sample between two NaN for one on a line of NaN, and drop it.
    void storeBeyondLines(assessments::TimedTrace_T<T>& piece,
                          const assessments::TimedPoint<T>& point) {
        auto& points = piece.points;
        const bool staysNan = !points.empty() && assessments::detail::isNan(points.back().value) &&
                              assessments::detail::isNan(point.value);
        if (!staysNan) {
            if (!points.empty()) {
                points.back().setDerivative(point);
            }
            points.push_back(point);
            builder_.emplace(piece);
        }
        piece.lastKnownTime = point.time;
    }

    assessments::INTERPOLATION_METHOD interpolation_;
    std::deque<assessments::TimedTrace_T<T>> pieces_;
    std::optional<assessments::detail::TraceBuilder<T>> builder_;
    std::optional<assessments::TimedPoint<T>> waiting_;
};

/// Takes the pieces over as those of a signal.
template <class T>
SharedPieces sharedPieces(std::deque<assessments::TimedTrace_T<T>> pieces) {
    auto shared = std::make_shared<TracePieces>();
    for (auto& piece : pieces) {
        shared->emplace_back(std::move(piece));
    }
    return shared;
}

}  // namespace vorm::evaluation
