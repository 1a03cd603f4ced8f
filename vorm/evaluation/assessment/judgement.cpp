#include "judgement.hpp"

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;
using assessments::TimedTrace;
using assessments::TimedTrace_T;

// The common part of a piece and a range; from > to where there is none.
TimeRange common(const TimedTrace& piece, const TimeRange& range) {
    return {std::max(range.from, piece.getStartTime()),
            std::min(range.to, piece.getLastKnownTime())};
}

// Calls visit(trace, part) for what lies in the range; whole pieces are not copied.
template <class T, class Visit>
void forEachPart(const TracePieces& pieces, const TimeRange& range, Visit visit) {
    for (const TimedTrace& piece : pieces) {
        const TimeRange part = common(piece, range);
        const auto& trace = piece.get<T>();
        if (trace.points.empty() || part.from > part.to) {
            continue;
        }
        if (part.from == piece.getStartTime() && part.to == piece.getLastKnownTime()) {
            visit(trace, part);
        } else {
            visit(trace.extractWindow(part.from, part.to, 0), part);
        }
    }
}

double leastOf(const TimedTrace_T<double>& trace, const TimeRange& part) {
    double least = *trace.valueAt(part.to);
    for (const auto& point : trace.points) {
        if (point.time <= part.to && !(least <= point.value)) {
            least = point.value;
        }
        if (std::isnan(least)) {
            break;
        }
    }
    return least;
}

}  // namespace

std::optional<TimeRange> knownRange(const std::vector<const Signal*>& signals) {
    std::optional<TimeRange> range;
    for (const Signal* signal : signals) {
        if (!signal->pieces->empty()) {
            const double start = signal->pieces->front().getStartTime();
            const double end = signal->pieces->back().getLastKnownTime();
            range = range ? TimeRange{std::min(range->from, start), std::max(range->to, end)}
                          : TimeRange{start, end};
        }
    }
    return range;
}

void judge(const TracePieces& truth, const TimeRange& range, AssessmentOutcome& outcome) {
    outcome.from = range.from;
    outcome.to = range.to;
    double known = 0;
    bool isKnown = false;
    forEachPart<bool>(truth, range, [&](const TimedTrace_T<bool>& trace, const TimeRange& part) {
        isKnown = true;
        known += part.to - part.from;
        for (const auto& interval : trace.getErrorIntervalList()) {
            const FailingInterval failure{interval[0], interval[1]};
            outcome.failures.push_back(failure);
            outcome.failed += isInstant(failure) ? 0 : failure.end - failure.start;
        }
    });
    outcome.passed = known - outcome.failed;
    outcome.unknown = range.to - range.from - known;
    if (isKnown) {
        outcome.verdict = outcome.failures.empty() ? resultEnum_t::PASS : resultEnum_t::FAIL;
    }
}

std::optional<double> leastValue(const TracePieces& pieces, const TimeRange& range) {
    std::optional<double> least;
    forEachPart<double>(pieces, range,
                        [&](const TimedTrace_T<double>& trace, const TimeRange& part) {
                            const double value = leastOf(trace, part);
                            // Written so that a NaN, once met, stays.
                            if (!least || !(*least <= value || std::isnan(*least))) {
                                least = value;
                            }
                        });
    return least;
}

}  // namespace vorm::evaluation
