// Columns in memory are the recording that a file with their rows is, to the last bit.

#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/recording/recording_in_memory.hpp>

#include <boost/container/vector.hpp>
#include <boost/mp11/algorithm.hpp>
#include <rapidcheck/gtest.h>

#include <bit>
#include <deque>

namespace vorm::evaluation::test {
namespace {

using assessments::FixedPoint;
using assessments::HalfFloat;
using assessments::INTERPOLATION_METHOD;
using assessments::resultEnum_t;
using assessments::ValueType;
using assessments::Verdict;

template <class T>
T anyValue() {
    if constexpr (std::is_same_v<T, bool>) {
        return anyIndex(2) == 0;
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return Verdict(anyOf<resultEnum_t>({resultEnum_t::PASS, resultEnum_t::FAIL}));
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return T(FixedPoint(anyOf<double>({-1.5, 0, 2, 3.25})));
    } else if constexpr (std::is_integral_v<T>) {
        constexpr auto limits = std::numeric_limits<T>();
        // Next to the last integer of all that a double has, where the type is wide enough.
        const auto near = static_cast<T>(std::min<std::uint64_t>(limits.max(), 1ULL << 53U));
        return anyOf<T>({limits.min(), limits.max(), near, static_cast<T>(near - 1),
                         static_cast<T>(sizeof(T) == 8 ? near + 1 : 0), 0, 1, 2});
    } else {
        const auto number = [](double value) { return static_cast<T>(value); };
        return anyOf<T>({number(0), number(-0.0), number(1), number(2), number(3), number(0.1),
                         number(NAN), number(INFINITY), number(-INFINITY)});
    }
}

template <class T>
std::string cellText(const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return value ? "true" : "false";
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return value.get() == resultEnum_t::PASS ? "PASS" : "FAIL";
    } else if constexpr (std::is_integral_v<T>) {
        return std::to_string(value);
    } else {
        return shortestNumber(assessments::support::toDouble(value));
    }
}

const auto mode = std::make_shared<const Enumeration>(Enumeration{"Mode", {"Off", "On", "Hold"}});

// The times of all rows: as they are in memory, and as a file writes them.
struct Times {
    std::vector<std::int64_t> ticks;
    std::vector<double> seconds;
    bool areTicks = anyIndex(2) == 0;
    ExactTime unit = anyOf<TimeUnit>({timeUnits.begin(), timeUnits.begin() + 6}).length;
    ExactTime zero = *ExactTime::of(
        anyOf<std::string>({"0", "-0.3", "46408.6", "1700000000.300000001"}), second);
    ExactTime numberUnit = anyOf<TimeUnit>({timeUnits.begin() + 2, timeUnits.end()}).length;
    double scale = anyOf<double>({1, 10, 1e9, 1e10});
    double offset = anyOf<double>({0, -0.3, 46408.6});
    std::vector<std::string> texts;

    explicit Times(std::size_t rows) {
        auto count = static_cast<std::int64_t>(anyIndex(7)) - 3;
        for (std::size_t row = 0; row < rows; ++row) {
            count += anyOf<std::int64_t>({0, 1, 1, 1, 2, 7});
            ticks.push_back(count);
            seconds.push_back(offset + static_cast<double>(count) / scale);
            texts.push_back(areTicks ? (zero + WideInteger{count} * unit).text()
                                     : numberTime(seconds.back()).text());
        }
    }

    SampleTimes of(const std::vector<std::size_t>& rows,
                   std::deque<std::vector<std::int64_t>>& keptTicks,
                   std::deque<std::vector<double>>& keptNumbers) const {
        auto& someTicks = keptTicks.emplace_back();
        auto& someNumbers = keptNumbers.emplace_back();
        for (const std::size_t row : rows) {
            someTicks.push_back(ticks[row]);
            someNumbers.push_back(seconds[row]);
        }
        return areTicks ? SampleTimes(TickTimes{someTicks, unit, zero})
                        : SampleTimes(NumberTimes{someNumbers, numberUnit, zero});
    }

    ExactTime step() const {
        return areTicks ? unit : *ExactTime::of(shortestNumber(1.5 / scale), numberUnit);
    }

private:
    ExactTime numberTime(double number) const {
        return zero + *ExactTime::of(shortestNumber(number), numberUnit);
    }
};

// One quantity both ways. What is missing is either marked or left out.
struct Quantity {
    SignalColumn column;
    SignalLayout layout;
    std::vector<std::string> cells;

    std::shared_ptr<void> values;
    boost::container::vector<bool> marks;
    std::deque<std::vector<std::int64_t>> ticks;
    std::deque<std::vector<double>> seconds;

    Quantity(const std::string& name, const Times& times, bool hasAll)
        : marksMissing_(hasAll || anyIndex(2) == 0) {
        column.name = layout.name = name;
        column.interpolation =
            anyOf<INTERPOLATION_METHOD>({INTERPOLATION_METHOD::ZOH, INTERPOLATION_METHOD::LINEAR});
        layout.equalTimes = column.equalTimes = anyOf<EqualTimes>(
            {EqualTimes::First, EqualTimes::Last, EqualTimes::Last, EqualTimes::Refuse});
        if (anyIndex(2) == 0) {
            layout.maxGap = column.maxGap = times.step();
        }
        column.nan = anyOf<NanMeaning>({NanMeaning::Value, NanMeaning::NoSample});
        constexpr std::size_t types = boost::mp11::mp_size<assessments::ValueTypes>::value;
        const std::size_t type = anyIndex(types + 1);
        if (type == types) {
            column.enumeration = mode;
            fill<std::int32_t>(times.texts.size());
        } else {
            boost::mp11::mp_with_index<types>(type, [&](auto index) {
                fill<boost::mp11::mp_at<assessments::ValueTypes, decltype(index)>>(
                    times.texts.size());
            });
        }
        layout.interpolation = column.interpolation;
        column.times = times.of(rows_, ticks, seconds);
        if (marksMissing_) {
            column.missing = {marks.data(), marks.size()};
        }
    }

private:
    template <class T>
    void fill(std::size_t count) {
        if (!assessments::IsFloatingPoint<T>::value) {
            column.interpolation = INTERPOLATION_METHOD::ZOH;
        }
        layout.type = column.enumeration ? SignalType::of(mode) : SignalType::of<T>();
        const auto kept = std::make_shared<boost::container::vector<T>>();
        for (std::size_t row = 0; row < count; ++row) {
            const T value = anyMember<T>();
            if (isKept(row, textOf(value))) {
                kept->push_back(value);
            }
        }
        column.values = SampleView<T>(kept->data(), kept->size());
        values = kept;
    }

    // Writes the value as the next cell, if it is not missing.
    bool isKept(std::size_t row, const std::string& text) {
        const bool isMissing = anyIndex(4) == 0;
        const bool isNan = column.nan == NanMeaning::NoSample && text == "nan";
        cells.push_back(isMissing || isNan ? "" : text);
        if (isMissing && !marksMissing_) {
            return false;
        }
        rows_.push_back(row);
        marks.push_back(isMissing);
        return true;
    }

    template <class T>
    T anyMember() const {
        if constexpr (std::is_same_v<T, std::int32_t>) {
            return column.enumeration ? static_cast<T>(anyIndex(3)) : anyValue<T>();
        } else {
            return anyValue<T>();
        }
    }

    template <class T>
    std::string textOf(const T& value) const {
        if constexpr (std::is_same_v<T, std::int32_t>) {
            return column.enumeration ? mode->members[static_cast<std::size_t>(value)]
                                      : cellText(value);
        } else {
            return cellText(value);
        }
    }

    bool marksMissing_;
    std::vector<std::size_t> rows_;
};

std::string bitsOf(double number) {
    return std::to_string(std::isnan(number) ? 0 : std::bit_cast<std::uint64_t>(number)) + ' ';
}

// All that a signal has, times and slopes to the last bit.
std::string bitsOf(const Recording& recording) {
    std::string text = bitsOf(recording.timeline.bias()) +
                       recording.timeline.timeAt(recording.timeline.bias()).text();
    for (const Signal& signal : recording.signals) {
        text += '\n' + textOf(signal, recording.timeline) + '\n';
        for (const auto& piece : *signal.pieces) {
            piece.visit([&](const auto& trace) {
                text += trace.enumTypeName + bitsOf(trace.lastKnownTime);
                for (const auto& point : trace.points) {
                    text += bitsOf(point.time) + bitsOf(point.derivative);
                }
            });
        }
    }
    return text;
}

RC_GTEST_PROP(RecordingInMemory, IsThatOfAFileWithItsRows, ()) {
    const Times times(1 + anyIndex(11));
    std::deque<Quantity> quantities;
    std::vector<SignalColumn> columns;
    RecordingLayout layout;
    std::string table = "t";
    for (const char* name : {"a", "b", "c"}) {
        const Quantity& added = quantities.emplace_back(name, times, quantities.empty());
        columns.push_back(added.column);
        layout.signals.push_back(added.layout);
        table += std::string(",") + name;
    }
    for (std::size_t row = 0; row < times.texts.size(); ++row) {
        table += '\n' + times.texts[row];
        for (const Quantity& quantity : quantities) {
            table += ',' + quantity.cells[row];
        }
    }
    ReadingOptions reading;
    RecordingOptions options;
    reading.reach = options.reach = anyOf<ExactTime>({ExactTime(), 1'000 * second});
    layout.time.resolution = anyOf<TimeUnit>({*timeUnitOf("ns"), *timeUnitOf("us")});
    options.resolution = layout.time.resolution.length;
    std::string fromFile;
    std::string fromMemory;
    const bool isRefused =
        errorOf([&] { fromFile = bitsOf(read(table, layout, reading)); }) != "no error";
    const std::string error =
        errorOf([&] { fromMemory = bitsOf(recordingOf("r", columns, options)); });
    RC_LOG() << table << '\n' << error;
    RC_CLASSIFY(isRefused);
    RC_ASSERT(isRefused == (error != "no error"));
    RC_ASSERT(isRefused || fromMemory == fromFile);
}

}  // namespace
}  // namespace vorm::evaluation::test
