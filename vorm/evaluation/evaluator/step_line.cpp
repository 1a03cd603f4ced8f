#include "step_line.hpp"

#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

namespace {

template <class T>
TimedTrace_T<T> lineOfSteps(const TimedTrace_T<T>& held) {
    TimedTrace_T<T> line(INTERPOLATION_METHOD::LINEAR, -support::infinity);
    for (const TimedPoint<T>& point : held.points) {
        if (!line.points.empty()) {
            const TimedPoint<T> before{support::previousTime(point.time), line.points.back().value};
            if (before.time > line.points.back().time) {
                line.push_back(before);
            }
        }
        line.push_back(point);
    }
    line.lastKnownTime = held.lastKnownTime;
    line.enumTypeName = held.enumTypeName;
    return line;
}

template <class T>
bool hasNan(const TimedTrace_T<T>& trace) {
    return std::any_of(trace.points.begin(), trace.points.end(),
                       [](const TimedPoint<T>& point) { return support::isNan(point.value); });
}

// The stretches of a held trace between which it changes from NaN to numbers or back.
template <class T>
void appendStretches(const TimedTrace_T<T>& held, TracePieces& pieces) {
    TimedTrace_T<T> stretch(INTERPOLATION_METHOD::ZOH, -support::infinity);
    for (const TimedPoint<T>& point : held.points) {
        const bool changes =
            !stretch.points.empty() &&
            support::isNan(stretch.points.back().value) != support::isNan(point.value);
        if (changes) {
            stretch.lastKnownTime = support::previousTime(point.time);
            pieces.emplace_back(std::move(stretch));
            stretch = TimedTrace_T<T>(INTERPOLATION_METHOD::ZOH, -support::infinity);
        }
        stretch.push_back(point);
    }
    stretch.lastKnownTime = held.lastKnownTime;
    pieces.emplace_back(std::move(stretch));
}

bool isHeld(const TimedTrace& trace) {
    return trace.getInterpolation() == INTERPOLATION_METHOD::ZOH;
}

}  // namespace

SharedPieces withNanApart(const SharedPieces& pieces, const TracePieces& other) {
    if (std::all_of(other.begin(), other.end(), isHeld)) {
        return pieces;
    }
    const auto mayStay = [](const TimedTrace& trace) {
        return trace.visit([&](const auto& typed) { return !isHeld(trace) || !hasNan(typed); });
    };
    if (std::all_of(pieces->begin(), pieces->end(), mayStay)) {
        return pieces;
    }
    auto apart = std::make_shared<TracePieces>();
    for (const TimedTrace& piece : *pieces) {
        if (mayStay(piece)) {
            apart->push_back(piece);
        } else {
            piece.visit([&](const auto& typed) { appendStretches(typed, *apart); });
        }
    }
    return apart;
}

ChangedTrace steppingLine(const TimedTrace& trace) {
    return trace.visit([&]<class T>(const TimedTrace_T<T>& typed) -> ChangedTrace {
        const bool steps =
            typed.interpolation == INTERPOLATION_METHOD::ZOH && typed.points.size() > 1;
        if (!IsFloatingPoint<T>::value || !steps) {
            return std::nullopt;
        }
        return TimedTrace(lineOfSteps(typed));
    });
}

bool isMixed(const TimedTrace& left, const TimedTrace& right) {
    return left.getInterpolation() != right.getInterpolation();
}

}  // namespace vorm::evaluation
