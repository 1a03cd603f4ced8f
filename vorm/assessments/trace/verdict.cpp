// Turning a bool trace into verdicts.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>

namespace vorm::assessments {
namespace {

TimedTrace_T<Verdict> verdictsOf(const TimedTrace_T<bool>& trace) {
    TimedTrace_T<Verdict> verdicts(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<Verdict> result(verdicts);
    for (const TimedPoint<bool>& point : trace.points) {
        result.append({point.time, Verdict(point.value ? resultEnum_t::PASS : resultEnum_t::FAIL)});
    }
    verdicts.lastKnownTime = trace.lastKnownTime;
    return verdicts;
}

// The limits of the range are marked with samples, also where the verdict does not change there
// and where both are one time; push_back would merge or refuse those.
void padToRange(TimedTrace_T<Verdict>& verdicts, double startTime, double endTime) {
    const Verdict noResult(resultEnum_t::NO_RESULT);
    auto& points = verdicts.points;
    if (points.empty()) {
        points.push_back({startTime, noResult});
        points.push_back({endTime, noResult});
        verdicts.lastKnownTime = -support::infinity;
        return;
    }
    const double known = verdicts.lastKnownTime;
    if (endTime <= known) {
        if (points.back().time < known) {
            points.push_back({known, points.back().value});
        }
    } else {
        const double afterKnown = support::nextTime(known);
        points.push_back({afterKnown, noResult});
        if (afterKnown < endTime) {
            points.push_back({endTime, noResult});
        }
    }
    if (points.front().time > startTime) {
        points.push_front({startTime, noResult});
    }
}

}  // namespace

template <class T>
TimedTrace_T<Verdict> TimedTrace_T<T>::convertToResult(
    [[maybe_unused]] const double& startTime, [[maybe_unused]] const double& endTime) const {
    if constexpr (support::isBool<T>) {
        TimedTrace_T<Verdict> verdicts = verdictsOf(extractWindow(startTime, endTime, 0));
        padToRange(verdicts, startTime, endTime);
        return verdicts;
    } else {
        throw AssessmentTypeException(errorType());
    }
}

template <class T>
TimedTrace_T<Verdict> TimedTrace_T<T>::convertToResult() const {
    if constexpr (support::isBool<T>) {
        return verdictsOf(*this);
    } else {
        throw AssessmentTypeException(errorType());
    }
}

#define VORM_VALUE_TYPE(T)                                                                        \
    template TimedTrace_T<Verdict> TimedTrace_T<T>::convertToResult(const double&, const double&) \
        const;                                                                                    \
    template TimedTrace_T<Verdict> TimedTrace_T<T>::convertToResult() const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
