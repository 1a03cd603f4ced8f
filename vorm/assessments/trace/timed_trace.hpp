#pragma once

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/export.hpp>
#include <vorm/assessments/trace/interpolation.hpp>
#include <vorm/assessments/trace/timed_point.hpp>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace vorm::assessments {

/// The course of one signal: samples in time order, read between them by holding the last value
/// (ZOH) or along straight lines (LINEAR).
///
/// - Sample times strictly increase, and no sample is redundant: what the trace already says is
///   not stored again. Only push_back keeps this up; the data members are open to readers.
/// - The trace is known on the closed span from its first sample to lastKnownTime. Samples may
///   stand after lastKnownTime (combine leaves them); they say nothing there.
/// - A constant is one sample at minus infinity, known up to plus infinity.
/// - Times are in whatever unit the caller uses; nothing is converted.
///
/// Operators return new traces and leave their operands as they are; only the members that are
/// not const edit a trace. Distinct traces may be used from several threads at once. The members
/// are compiled in the library for each of ValueTypes and for no other type.
template <class T>
class VORM_ASSESSMENTS_EXPORT TimedTrace_T {
public:
    using Point = TimedPoint<T>;
    using Points = std::deque<Point>;

    Points points;
    INTERPOLATION_METHOD interpolation;
    /// Up to which time, inclusive, the trace is known. Plus infinity for a constant.
    double lastKnownTime;
    /// The enumeration whose members the values stand for, or empty. Every member that makes a
    /// trace of the same type from this one alone keeps it.
    std::string enumTypeName;

    /// An empty trace.
    TimedTrace_T(INTERPOLATION_METHOD method, double knownUntil);
    /// A constant: one held sample at minus infinity, known up to plus infinity.
    explicit TimedTrace_T(const T& constant);

    TimedTrace_T(const TimedTrace_T&);
    TimedTrace_T(TimedTrace_T&&);
    TimedTrace_T& operator=(const TimedTrace_T&);
    TimedTrace_T& operator=(TimedTrace_T&&);
    ~TimedTrace_T();

    /// Appends a sample, or merges it where the trace already predicts it: a held trace drops a
    /// value that it holds, a linear one moves its last sample along the line. A NaN after a NaN is
    /// no change. In any case lastKnownTime becomes the sample's time. The first sample may have
    /// any time, the derivative of a stored sample stays as it is given until the next one comes.
    ///
    /// Throws AssessmentException "TimeValueMustIncrease" unless the time is greater than the last
    /// sample's (NaN never is), and AssessmentInternalException for a second sample of a linear
    /// trace of a discrete type. The trace is unchanged then. Constant time.
    void push_back(const Point& point);

    // ---- Lookup and windowing ------------------------------------------------------------------

    /// The value at `time`, or nothing before the first sample and after lastKnownTime.
    /// Logarithmic.
    std::optional<T> valueAt(double time) const;

    /// The sample in force at `time` (the last one at or before it) if `atOrBefore`, else the first
    /// one strictly after it, perhaps the end. At and before the first sample's time it is the
    /// first sample either way. An empty trace gives the end. Logarithmic.
    typename Points::const_iterator TimedPointIteratorForValueAt(const double& time,
                                                                 bool atOrBefore) const;

    /// Drops what lies before `time` in place: the trace then starts at `time` with the value it
    /// has there, or later if it started later. lastKnownTime stays.
    void popFrontUntil(const double& time);

    /// Drops the samples strictly after `time` in place and lowers lastKnownTime to `time`. The
    /// last sample of a linear trace keeps its slope, which holds up to lastKnownTime.
    void popBackAfter(double time);

    /// The trace on the closed range [startTime, endTime], as far as it is known; a sample at
    /// endTime is kept. Starts at startTime if the trace is known there. A range after
    /// lastKnownTime gives an empty held trace known up to minus infinity, a range before the first
    /// sample one without samples. A decimationInterval above 0 thins the result by decimate.
    /// Two lookups plus the copy.
    TimedTrace_T extractWindow(const double& startTime, const double& endTime,
                               const double& decimationInterval) const;

    /// Thins the trace in place for display: of each bucket of the given width only the least and
    /// the greatest sample stay, and the first sample of all. Buckets start at time 0, then at the
    /// first sample that is a width or more after the bucket's start. A trace with fewer samples
    /// than buckets stays as it is; no sample is written twice. Derivatives stay. Linear.
    void decimate(const double& decimationInterval);

    // ---- Shifts and slope ----------------------------------------------------------------------

    /// The trace looked at `delay` ahead: result(t) = trace(t + delay). A positive delay moves
    /// samples to earlier times; with trimToStart the result begins no earlier than this trace
    /// does. lastKnownTime moves too. Of samples that rounding moves to one time the earlier ones
    /// step back by one representable double. Slopes and infinite times stay as they are.
    TimedTrace_T Shift(double delay, bool trimToStart) const;

    /// Each sample one representable double later (direction >= 0, but for the first sample) or
    /// earlier (any other direction, NaN too; the result still begins where this trace does).
    /// Infinite times stay.
    TimedTrace_T EpsilonShift(double direction) const;

    /// The slopes of a linear trace, as a held trace of double whatever T is, known up to the last
    /// sample, at most to the double before lastKnownTime. Empty for an empty trace. Throws
    /// AssessmentTypeException for an enumerated trace, and AssessmentInternalException "Slope is
    /// not valid for ZOH TimedTrace." for a held one.
    TimedTrace_T<double> Slope() const;

    // ---- Verdicts and failures -----------------------------------------------------------------

    /// The verdicts of a bool trace on the closed range [startTime, endTime]: PASS where it is
    /// true, FAIL where it is false, NO_RESULT where there is no data. The first sample lies at
    /// startTime; after the data a NO_RESULT sample lies one representable double after the last
    /// known time K, and another at endTime; data that reach endTime end with a sample at K.
    /// lastKnownTime of the result is the smaller of endTime and this trace's, and minus infinity
    /// where the range holds no data at all; such a range gives two samples of NO_RESULT, at
    /// startTime and at endTime, also where these are one time. Throws AssessmentTypeException
    /// unless T is bool.
    TimedTrace_T<Verdict> convertToResult(const double& startTime, const double& endTime) const;

    /// The verdicts of a whole bool trace, without NO_RESULT. Throws AssessmentTypeException unless
    /// T is bool.
    TimedTrace_T<Verdict> convertToResult() const;

    /// The times of the samples at which the trace begins to fail, also those after lastKnownTime.
    /// A bool trace fails where it is false, a numeric one where it is not greater than 0 (a NaN
    /// is not). Throws AssessmentBinaryTypeException for an enumerated numeric trace, since an
    /// enumeration has no zero to compare with, and AssessmentTypeException for HalfFloat,
    /// fixed-point and verdict traces. Linear.
    std::vector<double> getErrorTimeList() const;

    /// The failing intervals {start, end} up to lastKnownTime, in time order; start is the first
    /// failing time, end the next passing one or lastKnownTime. Fails and throws as
    /// getErrorTimeList does. Linear.
    std::vector<std::vector<double>> getErrorIntervalList() const;

    /// The tag of T, or the name of the enumeration.
    AssessmentTypeException::TypeTag errorType() const;

    /// Throws AssessmentTypeException with the enumeration's name if there is one.
    void throwExceptionIfEnum() const;

    /// Throws AssessmentBinaryTypeException if either trace is enumerated; with allowSameEnum two
    /// traces of the same enumeration pass.
    void throwExceptionIfEnum(const TimedTrace_T& other, bool allowSameEnum) const;

    // ---- Pointwise operators -------------------------------------------------------------------

    /// f(value of this, value of other) over the union of both operands' sample times, from the
    /// later start on; known up to the smaller lastKnownTime. R is T or bool.
    ///
    /// Where an operand is linear, a numeric result is linear and gets a sample where the operands
    /// cross, so that a minimum or maximum bends at the right time; a held operand's step then
    /// shows as a line from the sample before it. A bool result is held: it gets f(v, v) at the
    /// crossing and the value after it one representable double later, which is exact for every
    /// comparison. Samples of the longer operand after the shorter one's end are kept, although
    /// they lie after the result's lastKnownTime; a slope that goes on beyond the last sample of
    /// both ends in a sample at lastKnownTime.
    ///
    /// Empty, and known up to minus infinity, where an operand is empty or starts after the
    /// other's lastKnownTime. What f throws passes through. Linear in the samples of both.
    template <class R, class F>
    TimedTrace_T<R> combine(const TimedTrace_T& other, F f) const;

    /// combine with any function of two values. An empty one throws std::bad_function_call at the
    /// first common time.
    TimedTrace_T Function(const TimedTrace_T& other, std::function<T(T, T)> fn) const;

    /// Sum. Integers wrap. Throws AssessmentBinaryTypeException for bool and enumerated traces.
    TimedTrace_T Add(const TimedTrace_T& other) const;

    /// Difference; unsigned integers stop at 0, signed ones wrap. Throws as Add does.
    TimedTrace_T Substract(const TimedTrace_T& other) const;
    /// Difference, also of unsigned integers, that wraps.
    TimedTrace_T Substract(const TimedTrace_T& other, std::false_type clampAtZero) const;
    /// Difference that is 0 wherever `other` is greater.
    TimedTrace_T Substract(const TimedTrace_T& other, std::true_type clampAtZero) const;

    /// Product with a constant on either side, which is an operand of one sample. It counts from
    /// its sample on, like any trace. One that is cut from a line goes on with its slope; the
    /// product is exact then at the samples of both and at its lastKnownTime, and straight between.
    /// Integers wrap. Throws AssessmentInternalException "Only multiplication by constant is
    /// supported." where neither operand has exactly one sample, and as Add does.
    TimedTrace_T Scale(const TimedTrace_T& other) const;

    /// Product of held traces. Integers wrap. Throws AssessmentTypeException with the tag of double
    /// for a linear operand, and as Add does.
    TimedTrace_T Multiply(const TimedTrace_T& other) const;

    /// Quotient of held traces of a floating type; NaN wherever `other` is 0. Throws
    /// AssessmentTypeException for any other type, with the tag of double for a linear operand, and
    /// as Add does.
    TimedTrace_T Divide(const TimedTrace_T& other) const;

    /// Absolute value, with a sample where a linear trace crosses zero. The most negative integer
    /// stays as it is, as do unsigned values; of a bool trace it is a copy. Throws
    /// AssessmentTypeException for enumerated and verdict traces.
    TimedTrace_T Abs() const;

    /// Negation; the most negative integer stays as it is. Throws AssessmentTypeException for bool
    /// traces, with the tag of bool, and for unsigned and enumerated numeric ones. An enumerated
    /// HalfFloat or fixed-point trace is negated and stays enumerated; a verdict has no negative
    /// and throws std::runtime_error.
    TimedTrace_T UMinus() const;
    /// Negation of an unsigned trace: always throws AssessmentTypeException.
    [[noreturn]] TimedTrace_T UMinus(std::true_type isUnsigned) const;

    /// Logical and of bool traces; the smaller value of all others, NaN where either is NaN.
    /// Throws AssessmentBinaryTypeException for enumerated traces.
    TimedTrace_T And(const TimedTrace_T& other) const;
    /// Logical or of bool traces; the larger value of all others, NaN where either is NaN. Throws
    /// as And does.
    TimedTrace_T Or(const TimedTrace_T& other) const;

    /// The verdict of `other` where this verdict is PASS, else NO_RESULT. Throws
    /// AssessmentTypeException unless T is a verdict.
    TimedTrace_T If(const TimedTrace_T& other) const;

    // ---- Windowed temporal operators -----------------------------------------------------------

    /// Replaces the trace in place by its extremum over the sliding closed window [t, t + width]:
    /// at every time t, not only at samples, for held and linear traces alike. keepFirst(x, y)
    /// tells whether x is kept in preference to y; it must be an order of the values, "x >= y" or
    /// "x <= y" for instance, that on linear traces agrees with their numeric order or its reverse.
    ///
    /// The result is known from the first sample to lastKnownTime - width; where the window is
    /// wider than the known span it is empty and known up to minus infinity. An empty or constant
    /// trace stays as it is, whatever the width. Throws AssessmentInternalException for a negative
    /// or NaN width, and std::bad_function_call for an empty keepFirst at the first comparison; the
    /// trace is unchanged then. Linear in the samples, whatever the width.
    ///
    /// Method: the two-stack sliding window extremum, see window_candidates.hpp.
    void timedWindow(const double& width, std::function<bool(T, T)> keepFirst);
    /// timedWindow with the greatest value; a NaN in the window makes it NaN.
    void timedMax(const double& width);
    /// timedWindow with the least value; a NaN in the window makes it NaN.
    void timedMin(const double& width);

    /// The greatest value in the closed window [t + a, t + b], as Shift(a, true) and timedMax of
    /// width b - a give it: on bool, whether the trace is true at some time of the window. Throws
    /// AssessmentInternalException for bounds that are no window: a is not finite, or as timedMax.
    TimedTrace_T Eventually(const double& a, const double& b) const;
    /// The least value in the closed window [t + a, t + b]: on bool, whether the trace is true
    /// throughout the window. Throws as Eventually does.
    TimedTrace_T Globally(const double& a, const double& b) const;

    // ---- Sums over windows ---------------------------------------------------------------------

    /// The integral over the window [t, t + width] of a held number, in its unit times that of
    /// time; of a bool trace, for how long it is true. A line, exact at its samples but for the
    /// rounding of sums in long double: those are the times at which a sample enters or leaves the
    /// window.
    ///
    /// Known from the first sample to lastKnownTime - width; empty where the window is wider than
    /// that, or the trace is empty. Throws AssessmentTypeException for enumerated and verdict
    /// traces, and with the tag of double for a linear one; AssessmentInternalException for a width
    /// that is negative or not finite, and for a NaN or an infinite number. Linear, whatever the
    /// width.
    TimedTrace_T<double> Integral(const double& width) const;

    /// In how many stretches a bool trace is true within the closed window [t, t + width]: those
    /// that begin in it, and one that has begun before. Known as Integral is. Throws
    /// AssessmentTypeException unless T is bool and for enumerated traces, and
    /// AssessmentInternalException for a width that is negative or not finite. Linear.
    TimedTrace_T<std::int32_t> Count(const double& width) const;

    // ---- Until ---------------------------------------------------------------------------------

    /// Whether this trace stays true until `other` is true, for bool traces. At a time t with this
    /// true and `other` false: whether this stays in force at least until the next sample of
    /// `other` (of the one whose samples have ended, the lastKnownTime takes that time's place).
    /// Samples before the common start are not looked at. Those after an operand's lastKnownTime
    /// are, and the result keeps them as that of combine does; it is known up to the smaller
    /// lastKnownTime. Empty where an operand is empty or the two have no common time. Throws
    /// AssessmentTypeException unless T is bool, AssessmentBinaryTypeException for enumerated
    /// traces. Linear.
    TimedTrace_T UntimedUntil(const TimedTrace_T& other) const;

    /// The quantitative until of held traces: with phi this trace and psi the other one,
    /// min(phi(t), sup over t' in [t, t + d] of min(psi(t'), inf of phi over [t, t'))). For t' that
    /// is t and the sample times in the window, where alone the supremum can be attained. A NaN
    /// among the values that these compare makes the result NaN; one outside the window does not
    /// count.
    ///
    /// d may be infinite. Samples after an operand's lastKnownTime are then looked at too, and
    /// where phi does not end before psi, phi's own minimum up to psi's end counts, so that on 0
    /// and 1 the result is that of UntimedUntil. An end is the last known time, or the time of the
    /// last sample if that is later.
    ///
    /// Known up to the smaller lastKnownTime minus a finite d. Empty where an operand is empty, the
    /// two have no common time, or d is wider than it. Throws AssessmentTypeException with the tag
    /// of double for a linear operand, AssessmentBinaryTypeException for enumerated ones,
    /// AssessmentInternalException for a negative or NaN d. Linear, whatever d is.
    TimedTrace_T Until(const TimedTrace_T& other, double d) const;

    /// Until bounded by the closed window [a, b]: And of Globally(0, a) of the unbounded until and
    /// Eventually(a, b) of `other`. Empty where an operand is empty. Throws as its steps do.
    TimedTrace_T Until(const TimedTrace_T& other, const double& a, const double& b) const;

    /// The mirror image of until in time, of held traces: with phi this trace and psi the other
    /// one, the best over all t' in the closed window [t - b, t - a] of the least of psi(t') and
    /// phi in (t', t], and phi at t itself and throughout [t - a, t]. On bool: whether psi was true
    /// at some time of the window, and phi has been from there on. Time goes in representable
    /// steps: of a psi that ends where phi begins the last time counts, where Shift does not round
    /// it away. A NaN among the values makes the result NaN.
    ///
    /// b may be infinite: nothing lies before the common start of the two. Known from the common
    /// start plus b (plus a, where b is infinite) to the smaller lastKnownTime; empty where that is
    /// no span, or an operand is empty. Throws AssessmentTypeException with the tag of double for a
    /// linear operand, AssessmentBinaryTypeException for enumerated ones,
    /// AssessmentInternalException for an a that is negative or not finite and for b < a. Linear,
    /// whatever the window is.
    TimedTrace_T Since(const TimedTrace_T& other, const double& a, const double& b) const;

    /// Adds a sample to a held trace that serves as a monotone window buffer: the samples at the
    /// back that comp(new value, their value) holds for are dropped, and the new value takes over
    /// from the earliest of them. comp is ValueGreaterEq or ValueLessEq. Throws
    /// AssessmentTypeException with the tag of double for a linear buffer, and AssessmentException
    /// "TimeValueMustIncrease" unless the time is greater than lastKnownTime. Amortised constant.
    template <class Comparison>
    void windowAdd(Comparison comparison, const Point& point);
};

#define VORM_VALUE_TYPE(T) extern template class TimedTrace_T<T>;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
