#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/recording/recording_in_memory.hpp>

#include <boost/container/vector.hpp>
#include <boost/mp11/algorithm.hpp>
#include <rapidcheck/gtest.h>

#include <bit>
#include <deque>

// Columns in memory are the recording that a file with their rows is, to the last bit.

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
        return *rc::gen::arbitrary<bool>();
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
    bool areTicks = *rc::gen::arbitrary<bool>();
    ExactTime unit = anyOf<TimeUnit>({timeUnits.begin(), timeUnits.begin() + 6}).length;
    ExactTime zero = *ExactTime::of(
        anyOf<std::string>({"0", "-0.3", "46408.6", "1700000000.300000001"}), second);
    double scale = anyOf<double>({1, 10, 1e9, 1e10});
    double offset = anyOf<double>({0, -0.3, 46408.6});
    std::vector<std::string> texts;

    explicit Times(std::size_t rows) {
        auto count = *rc::gen::inRange<std::int64_t>(-3, 4);
        for (std::size_t row = 0; row < rows; ++row) {
            count += anyOf<std::int64_t>({0, 1, 1, 1, 2, 7});
            ticks.push_back(count);
            seconds.push_back(offset + static_cast<double>(count) / scale);
            texts.push_back(areTicks ? (zero + WideInteger{count} * unit).text()
                                     : shortestNumber(seconds.back()));
        }
    }

    SampleTimes of(const std::vector<std::size_t>& rows,
                   std::deque<std::vector<std::int64_t>>& keptTicks,
                   std::deque<std::vector<double>>& keptSeconds) const {
        auto& someTicks = keptTicks.emplace_back();
        auto& someSeconds = keptSeconds.emplace_back();
        for (const std::size_t row : rows) {
            someTicks.push_back(ticks[row]);
            someSeconds.push_back(seconds[row]);
        }
        return areTicks ? SampleTimes(TickTimes{someTicks, unit, zero})
                        : SampleTimes(SecondTimes{someSeconds});
    }

    ExactTime step() const { return areTicks ? unit : *ExactTime::ofSeconds(1.5 / scale); }
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

    Quantity(const std::string& name, const Times& times, bool hasAll) {
        column.name = layout.name = name;
        column.interpolation =
            anyOf<INTERPOLATION_METHOD>({INTERPOLATION_METHOD::ZOH, INTERPOLATION_METHOD::LINEAR});
        column.equalTimes = anyOf<EqualTimes>(
            {EqualTimes::First, EqualTimes::Last, EqualTimes::Last, EqualTimes::Refuse});
        if (*rc::gen::arbitrary<bool>()) {
            column.maxGap = times.step();
        }
        column.nan = anyOf<NanMeaning>({NanMeaning::Value, NanMeaning::NoSample});
        constexpr std::size_t types = boost::mp11::mp_size<assessments::ValueTypes>::value;
        const auto type = *rc::gen::inRange<std::size_t>(0, types + 1);
        if (type == types) {
            column.enumeration = mode;
            fill<std::int32_t>(times, hasAll);
        } else {
            boost::mp11::mp_with_index<types>(type, [&](auto index) {
                fill<boost::mp11::mp_at<assessments::ValueTypes, decltype(index)>>(times, hasAll);
            });
        }
    }

    template <class T>
    void fill(const Times& times, bool hasAll) {
        if (!assessments::IsFloatingPoint<T>::value) {
            column.interpolation = INTERPOLATION_METHOD::ZOH;
        }
        layout.type = column.enumeration ? SignalType::of(mode) : SignalType::of<T>();
        layout.interpolation = column.interpolation;
        layout.equalTimes = column.equalTimes;
        layout.maxGap = column.maxGap;
        auto kept = std::make_shared<boost::container::vector<T>>();
        const bool marksMissing = hasAll || *rc::gen::arbitrary<bool>();
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < times.texts.size(); ++row) {
            const T value = anyMember<T>();
            const bool isMissing = *rc::gen::inRange(0, 4) == 0;
            const bool isNan =
                column.nan == NanMeaning::NoSample && assessments::support::isNan(value);
            cells.push_back(isMissing || isNan ? "" : textOf(value));
            if (!isMissing || marksMissing) {
                rows.push_back(row);
                kept->push_back(value);
                marks.push_back(isMissing);
            }
        }
        column.times = times.of(rows, ticks, seconds);
        column.values = SampleView<T>(kept->data(), kept->size());
        if (marksMissing) {
            column.missing = {marks.data(), marks.size()};
        }
        values = kept;
    }

    template <class T>
    T anyMember() const {
        if constexpr (std::is_same_v<T, std::int32_t>) {
            return column.enumeration ? *rc::gen::inRange(0, 3) : anyValue<T>();
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
    const Times times(*rc::gen::inRange<std::size_t>(1, 12));
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

template <class T>
SignalColumn columnOf(const std::string& name, const std::vector<double>& seconds,
                      const std::vector<T>& values) {
    SignalColumn column;
    column.name = name;
    column.times = SecondTimes{seconds};
    column.values = SampleView<T>(values);
    return column;
}

TEST(RecordingInMemory, ErrorsNameTheSignalAndTheIndex) {
    const auto error = [](const std::vector<double>& seconds,
                          const std::vector<std::int32_t>& values, const auto& change) {
        auto column = columnOf("a", seconds, values);
        change(column);
        return errorOf([&] { recordingOf("r", {column}); });
    };
    const auto asItIs = [](SignalColumn&) {};
    EXPECT_EQ(error({0, 1}, {1, 2}, asItIs), "no error");
    EXPECT_EQ(error({0, 1, 0.5, 2}, {1, 2, 3, 4}, asItIs),
              "signal 'a', index 2: the time goes back from 1 s to 0.5 s\n"
              "  samples stand in the order of their times");
    EXPECT_EQ(error({0, 1, 1}, {1, 2, 2}, asItIs),
              "signal 'a', index 2: the signal has a second sample at 1 s\n"
              "  say which one counts: equal_times = \"first\" or \"last\"");
    EXPECT_EQ(error({0, NAN, 1}, {1, 2, 3}, asItIs),
              "signal 'a', index 1: the time nan is not finite");
    EXPECT_EQ(error({0, 1e21}, {1, 2}, asItIs),
              "signal 'a', index 1: the time 1e+21 is beyond the range of times");
    EXPECT_EQ(error({0, 1}, {1}, asItIs), "signal 'a': has 2 times, but 1 values");
    const bool mark = true;
    EXPECT_EQ(error({0, 1}, {1, 2},
                    [&](auto& column) {
                        column.missing = {&mark, 1};
                    }),
              "signal 'a': has 2 times, but 1 marks of missing ones");
    EXPECT_EQ(error({0, 1}, {2, 3}, [](auto& column) { column.enumeration = mode; }),
              "signal 'a', index 1: 3 is the position of no member of the enumeration 'Mode'");
    EXPECT_EQ(error({0, 1}, {-1, 0}, [](auto& column) { column.enumeration = mode; }).substr(0, 24),
              "signal 'a', index 0: -1 ");
    EXPECT_EQ(error({0, 1}, {1, 2},
                    [](auto& column) { column.interpolation = INTERPOLATION_METHOD::LINEAR; })
                  .substr(0, 68),
              "signal 'a': the signal is of type int32, which has no linear interpo");
    const std::vector<double> numbers{1, 2};
    EXPECT_EQ(error({0, 1}, {1, 2},
                    [&](auto& column) {
                        column.enumeration = mode;
                        column.values = SampleView<double>(numbers);
                    }),
              "signal 'a': the positions of an enumeration's members are of type int32");
    const std::vector<std::int64_t> ticks{0, 1};
    EXPECT_EQ(error({}, {1, 2},
                    [&](auto& column) {
                        column.times = TickTimes{ticks, 60 * second, {}};
                    }),
              "signal 'a': the unit of its times is no length of time up to a second");
    EXPECT_EQ(error({}, {1, 2},
                    [&](auto& column) {
                        column.times = TickTimes{ticks, second, ExactTime(WideInteger{1} << 126)};
                    }),
              "signal 'a', index 0: the time is beyond the range of times");
    // 20 years in nanoseconds are beyond 2^59.
    EXPECT_EQ(error({0, 630720000.0000001}, {1, 2}, asItIs).substr(0, 56),
              "signal 'a', index 1: the recording is too long for its t");
}

TEST(RecordingInMemory, RefusesTimesThatCannotBeCounted) {
    const std::vector<double> seconds{0, 1};
    const std::vector<double> values{1, 2};
    for (const ExactTime resolution : {ExactTime(), 7 * nanosecond, 60 * second}) {
        EXPECT_EQ(errorOf([&] {
                      recordingOf("r", {columnOf("a", seconds, values)}, {resolution});
                  }).substr(0, 49),
                  "the resolution is no unit of time up to a second\n");
    }
}

TEST(RecordingInMemory, RefusesEnumerationsThatOneNameDoesNotTell) {
    const std::vector<double> seconds{0, 1};
    const std::vector<std::int32_t> positions{0, 1};
    const auto error = [&](const Enumeration& ofA, const Enumeration& ofB) {
        auto a = columnOf("a", seconds, positions);
        auto b = columnOf("b", seconds, positions);
        a.enumeration = std::make_shared<Enumeration>(ofA);
        b.enumeration = std::make_shared<Enumeration>(ofB);
        return errorOf([&] { recordingOf("r", {a, b}); });
    };
    EXPECT_EQ(error({"M", {"on", "off"}}, {"M", {"on", "off"}}), "no error");
    EXPECT_EQ(error({"M", {"on", "off"}}, {"M", {"off", "on"}}),
              "signal 'b': the enumeration 'M' has other members in another signal");
    EXPECT_EQ(error({"M", {"on", "off"}}, {"N", {"on", "on"}}),
              "signal 'b': the enumeration 'N' has a member twice");
    EXPECT_EQ(error({"", {"on", "off"}}, {"N", {"on", "off"}}),
              "signal 'a': the enumeration '' has no name");
}

TEST(RecordingInMemory, SignalsHaveTheirOwnTimesAndNames) {
    const std::vector<double> early{-1, 0.1};
    const std::vector<double> late{0.3};
    const std::vector<float> values{1, 2};
    const std::vector<float> value{3};
    const auto a = columnOf("a", early, values);
    auto b = columnOf("b", late, value);
    const auto nothing = columnOf("c", {}, std::vector<float>());
    EXPECT_EQ(textOf(recordingOf("r", {b, a, nothing})),
              "b: float 0.3:3 known 0.3\na: float -1:1 0.1:2 known 0.1\nc: float");
    EXPECT_EQ(textOf(recordingOf("r", {nothing})), "c: float");
    b.name = "a";
    EXPECT_EQ(errorOf([&] { recordingOf("r", {a, b}); }), "there are two signals 'a'");
}

}  // namespace
}  // namespace vorm::evaluation::test
