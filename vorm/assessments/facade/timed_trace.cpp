#include "timed_trace.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/operators/error_lists.hpp>
#include <vorm/assessments/operators/relation.hpp>
#include <vorm/assessments/value_families.hpp>

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

TimedTrace TimedTrace::Not() const {
    return visit([]<class T>(const TimedTrace_T<T>& trace) -> TimedTrace {
        if constexpr (support::isBool<T>) {
            trace.throwExceptionIfEnum();
            TimedTrace_T<bool> opposite(trace);
            for (TimedPoint<bool>& point : opposite.points) {
                point.value = !point.value;
            }
            return opposite;
        } else {
            throw AssessmentTypeException(trace.errorType());
        }
    });
}

TimedTrace TimedTrace::Globally(double a, double b) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Globally(a, b); });
}

TimedTrace TimedTrace::Eventually(double a, double b) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Eventually(a, b); });
}

TimedTrace TimedTrace::Integral(double width) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Integral(width); });
}

TimedTrace TimedTrace::Count(double width) const {
    return visit([&](const auto& trace) -> TimedTrace { return trace.Count(width); });
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
    const auto list = [](const TimedTrace_T<bool>& trace) {
        std::list<VORM_Interval> intervals;
        detail::forEachFailingInterval(trace, [&](double start, double end) {
            intervals.push_back({start, end});
        });
        return intervals;
    };
    return visit([&](const auto& trace) { return detail::listOfFailures(trace, list); });
}

std::vector<double> TimedTrace::getErrorTimeList() const {
    return visit([](const auto& trace) { return trace.getErrorTimeList(); });
}

// The operation on the two typed traces, which must have the same value type.
template <class Operation>
TimedTrace TimedTrace::applyToPair(const TimedTrace& other, Operation operation) const {
    if (which() != other.which()) {
        throw AssessmentBinaryTypeException(errorType(), other.errorType());
    }
    return visit([&]<class T>(const TimedTrace_T<T>& left) -> TimedTrace {
        return operation(left, *boost::get<TimedTrace_T<T>>(&other.trace_));
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

TimedTrace TimedTrace::Multiply(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Multiply(b); });
}

TimedTrace TimedTrace::Divide(const TimedTrace& other) const {
    return applyToPair(other, [](const auto& a, const auto& b) { return a.Divide(b); });
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

TimedTrace TimedTrace::Since(double a, double b, const TimedTrace& other) const {
    return applyToPair(other,
                       [&](const auto& phi, const auto& psi) { return phi.Since(psi, a, b); });
}

TimedTrace TimedTrace::compare(const TimedTrace& other, const detail::Relation& relation) const {
    return applyToPair(
        other, [&](const auto& a, const auto& b) { return detail::compare(a, b, relation); });
}

TimedTrace TimedTrace::Greater(const TimedTrace& other) const {
    return compare(other, {.less = false, .equal = false, .greater = true});
}

TimedTrace TimedTrace::GreaterEqual(const TimedTrace& other) const {
    return compare(other, {.less = false, .equal = true, .greater = true});
}

TimedTrace TimedTrace::Less(const TimedTrace& other) const {
    return compare(other, {.less = true, .equal = false, .greater = false});
}

TimedTrace TimedTrace::LessEqual(const TimedTrace& other) const {
    return compare(other, {.less = true, .equal = true, .greater = false});
}

TimedTrace TimedTrace::Equal(const TimedTrace& other) const {
    return compare(other, {.less = false, .equal = true, .greater = false});
}

TimedTrace TimedTrace::NotEqual(const TimedTrace& other) const {
    return compare(other, {.less = true, .equal = false, .greater = true, .unordered = true});
}

}  // namespace vorm::assessments
