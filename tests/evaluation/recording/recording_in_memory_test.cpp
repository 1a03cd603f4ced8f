#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/recording/recording_in_memory.hpp>

#include <functional>

namespace vorm::evaluation::test {
namespace {

template <class T>
SignalColumn columnOf(const std::string& name, const std::vector<double>& seconds,
                      const std::vector<T>& values) {
    SignalColumn column;
    column.name = name;
    column.times = NumberTimes{seconds};
    column.values = SampleView<T>(values);
    return column;
}

TEST(RecordingInMemory, ErrorsNameTheSignalAndTheIndex) {
    using Change = std::function<void(SignalColumn&)>;
    const Change asItIs = [](SignalColumn&) {};
    const auto error = [](const std::vector<double>& seconds,
                          const std::vector<std::int32_t>& values, const Change& change) {
        auto column = columnOf("a", seconds, values);
        change(column);
        return errorOf([&] { recordingOf("r", {column}); });
    };
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
    const auto mode =
        std::make_shared<const Enumeration>(Enumeration{"Mode", {"Off", "On", "Hold"}});
    const Change modes = [&](SignalColumn& column) { column.enumeration = mode; };
    const bool mark = true;
    EXPECT_EQ(error({0, 1}, {1, 2}, [&](auto& column) { column.missing = std::span(&mark, 1); }),
              "signal 'a': has 2 times, but 1 marks of missing ones");
    EXPECT_EQ(error({0, 1}, {2, 3}, modes),
              "signal 'a', index 1: 3 is the position of no member of the enumeration 'Mode'");
    EXPECT_EQ(error({0, 1}, {-1, 0}, modes).substr(0, 24), "signal 'a', index 0: -1 ");
    EXPECT_EQ(error({0, 1}, {1, 2},
                    [](auto& column) {
                        column.interpolation = assessments::INTERPOLATION_METHOD::LINEAR;
                    })
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
