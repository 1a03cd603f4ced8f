// How collected pieces are placed on a timeline.

#include "trace_collector.hpp"

#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

template <class T>
using Traces = std::deque<TimedTrace_T<T>>;

namespace {

// Gives the samples of a piece the bias of the timeline.
template <class T>
void place(TimedTrace_T<T>& piece, const Timeline& timeline) {
    const bool isLine = piece.interpolation == INTERPOLATION_METHOD::LINEAR;
    double lastCounted = -std::numeric_limits<double>::infinity();
    TimedPoint<T>* last = nullptr;
    // Samples lie in many small blocks, whose addresses a processor does not foresee.
    constexpr std::size_t distance = 64;
    auto ahead =
        piece.points.begin() + static_cast<std::ptrdiff_t>(std::min(distance, piece.points.size()));
    for (TimedPoint<T>& point : piece.points) {
        if (ahead != piece.points.end()) {
            __builtin_prefetch(&*ahead++, 1);
        }
        const double counted = point.time;
        point.time = timeline.biased(counted);
        if (last != nullptr) {
            if (!(point.time > last->time)) {
                timeline.failForSpan(timeline.step());
            }
            // Distances of rounded times have slopes of their own.
            if (isLine && point.time - last->time != counted - lastCounted) {
                last->setDerivative(point);
            }
        }
        lastCounted = counted;
        last = &point;
    }
    piece.lastKnownTime = timeline.biased(piece.lastKnownTime);
}

// Where two neighbours share a time, the one of NaN keeps off it.
template <class T>
void setApart(TimedTrace_T<T>& left, TimedTrace_T<T>& right, const Timeline& timeline) {
    if (left.lastKnownTime < right.points.front().time) {
        return;
    }
    if (left.lastKnownTime > right.points.front().time) {
        timeline.failForSpan(timeline.step());
    }
    if (support::isNan(right.points.front().value)) {
        right.points.front().time = support::nextTime(left.lastKnownTime);
    } else {
        left.lastKnownTime = support::previousTime(right.points.front().time);
    }
}

}  // namespace

template <class T>
SharedPieces sharedPieces(Traces<T> pieces, const Timeline& timeline) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        place(pieces[i], timeline);
        if (i > 0) {
            setApart(pieces[i - 1], pieces[i], timeline);
        }
    }
    auto shared = std::make_shared<TracePieces>();
    for (auto& piece : pieces) {
        // Between two samples one step apart there is no time for NaN.
        if (piece.points.front().time <= piece.lastKnownTime) {
            shared->emplace_back(std::move(piece));
        }
    }
    return shared;
}

#define VORM_VALUE_TYPE(T) template SharedPieces sharedPieces(Traces<T>, const Timeline&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::evaluation
