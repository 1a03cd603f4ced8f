#include "number_window.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/temporal.hpp>

#include <memory>
#include <span>

namespace vorm::evaluation {

using namespace assessments;

namespace {

bool isNan(const TimedTrace& piece) {
    return piece.visit(
        [](const auto& typed) { return support::isNan(typed.points.front().value); });
}

// NaN begins a step of time after a sample, and moved times round by another one. A hole is longer.
bool isBeside(const TimedTrace& piece, const TimedTrace& next) {
    constexpr double steps = 4;
    const double end = piece.getLastKnownTime();
    return next.getStartTime() - end < steps * (support::nextTime(end) - end) &&
           isNan(piece) != isNan(next);
}

// The first value of a piece, held.
TimedTrace held(const TimedTrace& piece, double first, double last) {
    return piece.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        TimedTrace_T<T> result(INTERPOLATION_METHOD::ZOH, -support::infinity);
        result.push_back({first, typed.points.front().value});
        result.lastKnownTime = last;
        return result;
    });
}

// Of pieces that are beside each other: what reaches from one into another takes in NaN.
void appendWindows(VORM_OP op, double a, double b, std::span<const TimedTrace> run,
                   TracePieces& results) {
    const support::Distances window = support::windowOf(op, a, b);
    double start = run.front().getStartTime() - window.first;
    const auto appendNanUpTo = [&](double last) {
        if (run.size() > 1 && start <= last) {
            appendPiece(results, held(isNan(run[0]) ? run[0] : run[1], start, last));
        }
    };
    for (const TimedTrace& piece : run) {
        TimedTrace within = windowOnNumbers(op, a, b, piece);
        if (!isKnownNowhere(within)) {
            appendNanUpTo(support::previousTime(within.getStartTime()));
            start = support::nextTime(within.getLastKnownTime());
            appendPiece(results, std::move(within));
        }
    }
    appendNanUpTo(run.back().getLastKnownTime() - window.last);
}

}  // namespace

SharedPieces numberWindow(VORM_OP op, double a, double b, const TracePieces& number) {
    auto results = std::make_shared<TracePieces>();
    const std::span<const TimedTrace> pieces(number);
    for (std::size_t first = 0, next = 0; first < pieces.size(); first = next) {
        do {
            ++next;
        } while (next < pieces.size() && isBeside(pieces[next - 1], pieces[next]));
        appendWindows(op, a, b, pieces.subspan(first, next - first), *results);
    }
    return results;
}

}  // namespace vorm::evaluation
