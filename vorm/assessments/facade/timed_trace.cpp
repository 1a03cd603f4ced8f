#include "timed_trace.hpp"

#include <vorm/assessments/errors/assessment_binary_type_exception.hpp>

#include <type_traits>

namespace vorm::assessments {

double TimedTrace::getStartTime() const {
    return visit([](const auto& trace) {
        return trace.points.empty() ? -std::numeric_limits<double>::infinity()
                                    : trace.points.front().time;
    });
}

double TimedTrace::getLastKnownTime() const {
    return visit([](const auto& trace) { return trace.lastKnownTime; });
}

INTERPOLATION_METHOD TimedTrace::getInterpolation() const {
    return visit([](const auto& trace) { return trace.interpolation; });
}

bool TimedTrace::isConstantScalar() const {
    return visit([](const auto& trace) { return trace.points.size() == 1; });
}

AssessmentTypeException::TypeTag TimedTrace::errorType() const {
    return visit([](const auto& trace) { return trace.errorType(); });
}

TimedTrace TimedTrace::Abs() const {
    return visit([](const auto& trace) -> TimedTrace { return trace.Abs(); });
}

TimedTrace TimedTrace::UnaryMinus() const {
    return visit([](const auto& trace) -> TimedTrace { return trace.UMinus(); });
}

TimedTrace TimedTrace::Shift(double delay) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Shift(delay, true); });
}

TimedTrace TimedTrace::EpsilonShift(double direction) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.EpsilonShift(direction); });
}

TimedTrace TimedTrace::Slope() const {
    return visit([](const auto& trace) -> TimedTrace { return trace.Slope(); });
}

TimedTrace TimedTrace::Globally(double a, double b) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Globally(a, b); });
}

TimedTrace TimedTrace::Eventually(double a, double b) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Eventually(a, b); });
}

TimedTrace TimedTrace::extractWindow(double startTime, double endTime,
                                     double decimationInterval) const {
    return visit([&](const auto& trace) -> TimedTrace {
        return trace.extractWindow(startTime, endTime, decimationInterval);
    });
}

TimedTrace TimedTrace::ConvertToResult() const {
    const bool holdsVerdicts = which() == int{valueTypeIndex<Verdict>};
    return holdsVerdicts
               ? *this
               : visit([](const auto& trace) -> TimedTrace { return trace.convertToResult(); });
}

TimedTrace TimedTrace::ConvertToResult(double startTime, double endTime) const {
    return visit(
        [&](const auto& trace) -> TimedTrace { return trace.convertToResult(startTime, endTime); });
}

std::list<VORM_Interval> TimedTrace::getErrorIntervalList() const {
    std::list<VORM_Interval> intervals;
    for (const auto& interval :
         visit([](const auto& trace) { return trace.getErrorIntervalList(); })) {
        intervals.push_back({interval[0], interval[1]});
    }
    return intervals;
}

std::vector<double> TimedTrace::getErrorTimeList() const {
    return visit([](const auto& trace) { return trace.getErrorTimeList(); });
}

// The operation on the two typed traces, which must have the same value type.
template <class Operation>
TimedTrace TimedTrace::applyToPair(const TimedTrace& other, Operation operation) const {
    return visit([&]<class T>(const TimedTrace_T<T>& left) -> TimedTrace {
        const auto* right = boost::get<TimedTrace_T<T>>(&other.trace_);
        if (right == nullptr) {
            throw AssessmentBinaryTypeException(left.errorType(), other.errorType());
        }
        return operation(left, *right);
    });
}

TimedTrace TimedTrace::Plus(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Add(b); });
}

TimedTrace TimedTrace::Minus(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Substract(b); });
}

TimedTrace TimedTrace::Scale(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Scale(b); });
}

TimedTrace TimedTrace::And(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.And(b); });
}

TimedTrace TimedTrace::Or(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Or(b); });
}

TimedTrace TimedTrace::If(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.If(b); });
}

TimedTrace TimedTrace::Until(double a, double b, const TimedTrace& other) const {
    return applyToPair(other,
                       [&](const auto& phi, const auto& psi) { return phi.Until(psi, a, b); });
}

}  // namespace vorm::assessments
