#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/trace/interpolation.hpp>
#include <vorm/assessments/trace/interval.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/variant.hpp>

#include <list>
#include <utility>
#include <vector>

namespace vorm::assessments {

namespace detail {
struct Relation;
}

/// A trace of any one of the value types.
///
/// Every operation but the comparisons and Not forwards to the member of the typed trace that it is
/// named after (see TimedTrace_T for its meaning, ends and cost). All return a new trace and leave
/// their operands as they are. There is no promotion: the operands of a binary operation have the
/// same value type, a constant's too, or AssessmentBinaryTypeException names both types, the left
/// one first. All other failures of the typed members pass through unchanged.
class VORM_ASSESSMENTS_EXPORT TimedTrace {
public:
    /// A copy of the typed trace.
    template <class T>
    requires boost::mp11::mp_contains<ValueTypes, T>::value TimedTrace(const TimedTrace_T<T>& trace)
        : trace_(trace) {}
    /// Takes the samples over; none is copied.
    template <class T>
    requires boost::mp11::mp_contains<ValueTypes, T>::value TimedTrace(TimedTrace_T<T>&& trace)
        : trace_(std::move(trace)) {}

    /// The typed trace. Throws boost::bad_get when another type is held.
    template <class T>
    const TimedTrace_T<T>& get() const {
        return boost::get<TimedTrace_T<T>>(trace_);
    }

    /// The index of the value type in ValueTypes.
    int which() const { return trace_.which(); }

    /// What `visitor` returns for the typed trace; it takes any TimedTrace_T by const reference.
    template <class Visitor>
    decltype(auto) visit(Visitor&& visitor) const {
        return boost::apply_visitor(std::forward<Visitor>(visitor), trace_);
    }

    /// The time of the first sample; minus infinity for an empty trace and for a constant.
    double getStartTime() const;
    double getLastKnownTime() const;
    INTERPOLATION_METHOD getInterpolation() const;
    /// Whether the trace has exactly one sample, whatever its time.
    bool isConstantScalar() const;
    /// The tag of the value type, or the name of the enumeration.
    AssessmentTypeException::TypeTag errorType() const;

    TimedTrace Abs() const;
    TimedTrace UnaryMinus() const;
    /// Shift that is trimmed to the start of this trace.
    TimedTrace Shift(double delay) const;
    TimedTrace EpsilonShift(double direction) const;
    /// Always a trace of double.
    TimedTrace Slope() const;
    /// The opposite of a bool trace, with its samples and its last known time. Throws
    /// AssessmentTypeException for an enumerated trace and unless the values are bool.
    TimedTrace Not() const;
    TimedTrace Globally(double a, double b) const;
    TimedTrace Eventually(double a, double b) const;
    TimedTrace Integral(double width) const;
    TimedTrace Count(double width) const;
    TimedTrace extractWindow(double startTime, double endTime, double decimationInterval) const;

    /// The verdicts of a whole bool trace, without NO_RESULT; a copy of a verdict trace.
    TimedTrace ConvertToResult() const;
    /// The verdicts of a bool trace on [startTime, endTime].
    TimedTrace ConvertToResult(double startTime, double endTime) const;
    std::list<VORM_Interval> getErrorIntervalList() const;
    std::vector<double> getErrorTimeList() const;

    TimedTrace Plus(const TimedTrace& other) const;
    /// Difference; unsigned values stop at 0.
    TimedTrace Minus(const TimedTrace& other) const;
    /// Product with a constant.
    TimedTrace Scale(const TimedTrace& other) const;
    /// Product of held traces.
    TimedTrace Multiply(const TimedTrace& other) const;
    TimedTrace Divide(const TimedTrace& other) const;
    TimedTrace And(const TimedTrace& other) const;
    TimedTrace Or(const TimedTrace& other) const;
    /// This trace is the condition, `other` the guarded verdict.
    TimedTrace If(const TimedTrace& other) const;
    TimedTrace Until(double a, double b, const TimedTrace& other) const;
    /// This trace since `other`.
    TimedTrace Since(double a, double b, const TimedTrace& other) const;

    // Comparisons at every time, as TimedTrace_T::combine gives them: a bool trace that is exact at
    // the samples of both operands and where lines cross. A comparison with a NaN sample is false,
    // NotEqual is true; a line that leads to or from a NaN is compared at its samples only. bool
    // orders false before true, verdicts by their number. Traces of one enumeration are compared by
    // their numbers, otherwise AssessmentBinaryTypeException names the enumeration. Linear in the
    // samples of both.

    TimedTrace Greater(const TimedTrace& other) const;
    TimedTrace GreaterEqual(const TimedTrace& other) const;
    TimedTrace Less(const TimedTrace& other) const;
    TimedTrace LessEqual(const TimedTrace& other) const;
    TimedTrace Equal(const TimedTrace& other) const;
    TimedTrace NotEqual(const TimedTrace& other) const;

private:
    using Alternatives =
        boost::mp11::mp_rename<boost::mp11::mp_transform<TimedTrace_T, ValueTypes>, boost::variant>;

    template <class Operation>
    TimedTrace applyToPair(const TimedTrace& other, Operation operation) const;
    TimedTrace compare(const TimedTrace& other, const detail::Relation& relation) const;

    Alternatives trace_;
};

}  // namespace vorm::assessments
