#pragma once

#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <boost/mp11/algorithm.hpp>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace vorm::evaluation {

/// Times as whole numbers of a unit, such as the nanoseconds of a clock.
struct TickTimes {
    std::span<const std::int64_t> ticks;
    ExactTime unit = nanosecond;  ///< above 0, a second at the most
    ExactTime zero = {};          ///< the time of tick 0
};

/// Times as numbers of a unit: each stands for the shortest decimal that reads back as it, 0.3 for
/// three tenths.
struct NumberTimes {
    std::span<const double> numbers;
    ExactTime unit = second;  ///< above 0
    ExactTime zero = {};      ///< the time of number 0
};

using SampleTimes = std::variant<TickTimes, NumberTimes>;

template <class T>
using SampleView = std::span<const T>;

/// Samples of one of the value types.
using SampleValues =
    boost::mp11::mp_rename<boost::mp11::mp_transform<SampleView, assessments::ValueTypes>,
                           std::variant>;

/// What a NaN among the samples of a column means.
enum class NanMeaning { Value, NoSample };

/// The recorded samples of a quantity, in memory that outlives their use.
struct SignalColumn {
    std::string name;
    SampleTimes times;
    SampleValues values;
    /// Of std::int32_t values that are positions of its members; or null.
    std::shared_ptr<const Enumeration> enumeration = nullptr;
    std::span<const bool> missing = {};  ///< true where there is no sample; empty: nowhere
    std::string unit = {};               ///< of the values, for display; or empty
    NanMeaning nan = NanMeaning::Value;
    /// Linear only for a type that has lines.
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    /// A distance of samples above it is a hole.
    std::optional<ExactTime> maxGap = std::nullopt;
    EqualTimes equalTimes = EqualTimes::Refuse;
};

/// The least and the greatest time of the columns, which are in order; nothing where they have
/// none. Throws InputError as timelineOf does for these times.
std::optional<TimeSpan> recordedSpan(const std::vector<SignalColumn>& columns);

/// A timeline for all of the columns, whose times are in order: it counts in whole numbers of the
/// resolution from the least time on. Formulas look as far as `reach` from these times. Throws
/// InputError for a first or last time that is not finite or beyond the range, for a unit that is
/// no length of time, or of ticks above a second, and for a resolution that is none of timeUnits up
/// to one.
Timeline timelineOf(const std::vector<SignalColumn>& columns, ExactTime resolution = nanosecond,
                    ExactTime reach = oneDay);

/// The signal on a timeline of timelineOf, by the rules that hold for recordings in files: holes,
/// equal times, and lines to and from what is not finite. Throws InputError that names the signal
/// and the index of a time that goes back, repeats where that is refused, or is not finite, and of
/// an enumeration's value that is no member; for lengths that differ; for lines of a type that has
/// none; and where the timeline cannot tell two samples apart. Times are looked at before values.
/// Linear in the samples.
Signal signalOf(const SignalColumn& column, const Timeline& timeline);

}  // namespace vorm::evaluation
