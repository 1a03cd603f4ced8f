#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/drawing/recording_drawing.hpp>
#include <vorm/evaluation/drawing/value_columns.hpp>

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace vorm::evaluation {
namespace {

using vorm::test::infinity;
using vorm::test::nan;

// Pieces with some values over and over, so that extremes are many, and some that are none.
SignalDrawing anyDrawing() {
    SignalDrawing drawing{"x", "", DrawingKind::Lines, {}, {}, 0};
    double time = 1e15;
    for (int left = *rc::gen::inRange(1, 6); left > 0; --left) {
        DrawnPiece piece{{}, {}, 0};
        for (int samples = *rc::gen::inRange(1, 60); samples > 0; --samples) {
            time += *rc::gen::element(1, 1, 1, 7, 1000);
            piece.times.push_back(time);
            piece.values.push_back(*rc::gen::element(-2.5, 0.0, 1.0, 3.0, nan, infinity));
        }
        time += *rc::gen::element(0, 5);
        piece.end = time;
        drawing.pieces.push_back(piece);
    }
    drawing.samples = drawing.shown();
    return drawing;
}

using Samples = std::map<double, double>;

Samples samplesOf(const SignalDrawing& drawing) {
    Samples samples;
    for (const DrawnPiece& piece : drawing.pieces) {
        for (std::size_t i = 0; i < piece.times.size(); ++i) {
            samples[piece.times[i]] = piece.values[i];
        }
    }
    return samples;
}

struct Extremes {
    double least = infinity;
    double greatest = -infinity;
    bool hasNan = false;

    friend bool operator==(const Extremes&, const Extremes&) = default;
};

Extremes extremesBetween(const Samples& samples, double from, double to) {
    Extremes extremes;
    for (const auto& [time, value] : samples) {
        if (from <= time && time < to) {
            extremes.least = std::fmin(extremes.least, value);
            extremes.greatest = std::fmax(extremes.greatest, value);
            extremes.hasNan |= std::isnan(value);
        }
    }
    return extremes;
}

// How many times the signal begins to be a number or none: at pieces, and where NaNs begin and end.
std::size_t stretchesOf(const SignalDrawing& drawing) {
    std::size_t count = 0;
    for (const DrawnPiece& piece : drawing.pieces) {
        for (std::size_t i = 0; i < piece.values.size(); ++i) {
            count += i == 0 || std::isnan(piece.values[i]) != std::isnan(piece.values[i - 1]);
        }
    }
    return count;
}

// What is held, or lies on a line, at that time; nothing where it is not known.
std::optional<double> valueAt(const SignalDrawing& drawing, double time) {
    for (const DrawnPiece& piece : drawing.pieces) {
        for (std::size_t i = piece.times.size(); i-- > 0;) {
            const bool isLast = i + 1 == piece.times.size();
            const double end = isLast ? piece.end : piece.times[i + 1];
            if (piece.times[i] <= time && (time < end || (isLast && time == end))) {
                const double value = piece.values[i];
                const bool isLine =
                    drawing.kind == DrawingKind::Lines && !isLast && time != piece.times[i];
                const double next = isLine ? piece.values[i + 1] : value;
                const double share =
                    end > piece.times[i] ? (time - piece.times[i]) / (end - piece.times[i]) : 0;
                return value + (next - value) * share;
            }
        }
    }
    return std::nullopt;
}

RC_GTEST_PROP(Thinning, KeepsTheExtremesOfEachBucketAndAddsNothing, ()) {
    const SignalDrawing drawing = anyDrawing();
    Thinning thinning;
    thinning.buckets = *rc::gen::inRange<std::size_t>(1, 40);
    thinning.leaveAlone = 10;
    const SignalDrawing thin = thinned(drawing, thinning);
    const Samples all = samplesOf(drawing);
    const Samples kept = samplesOf(thin);
    for (const auto& [time, value] : kept) {
        RC_ASSERT(all.contains(time));
        RC_ASSERT(all.at(time) == value || std::isnan(value));
    }
    RC_ASSERT(thin.samples == all.size());
    if (all.size() <= thinning.leaveAlone) {
        RC_ASSERT(kept.size() == all.size());
        return;
    }
    RC_ASSERT(kept.size() <= 4 * (thinning.buckets + 1 + stretchesOf(drawing)));
    RC_ASSERT(stretchesOf(thin) == stretchesOf(drawing));
    const double begin = all.begin()->first;
    const double width = (all.rbegin()->first - begin) / static_cast<double>(thinning.buckets);
    // In between bucket limits, whatever way these are rounded.
    for (std::size_t i = 0; i < thinning.buckets; ++i) {
        const double from = begin + static_cast<double>(i) * width + 0.5;
        const double to = from + width - 1;
        const Extremes inner = extremesBetween(all, from, to);
        const Extremes whole = extremesBetween(kept, from - 1, to + 1);
        RC_ASSERT(whole.least <= inner.least);
        RC_ASSERT(whole.greatest >= inner.greatest);
        RC_ASSERT(whole.hasNan || !inner.hasNan);
    }
    RC_ASSERT(thin.pieces.size() == drawing.pieces.size());
    for (std::size_t i = 0; i < thin.pieces.size(); ++i) {
        const DrawnPiece& whole = drawing.pieces[i];
        RC_ASSERT(thin.pieces[i].times.front() == whole.times.front());
        RC_ASSERT(thin.pieces[i].times.back() == whole.times.back());
        RC_ASSERT(thin.pieces[i].end == whole.end);
    }
}

RC_GTEST_PROP(Drawing, WithinASpanIsWhatItWasThere, ()) {
    SignalDrawing drawing = anyDrawing();
    drawing.kind = *rc::gen::element(DrawingKind::Lines, DrawingKind::Steps);
    const double begin = drawing.pieces.front().times.front();
    const double from = begin + *rc::gen::inRange(-50, 3000);
    const CountedSpan span{from, from + *rc::gen::inRange(0, 2000)};
    const SignalDrawing cut = within(drawing, span);
    RC_ASSERT(cut.samples == cut.shown());
    for (int slice = 0; slice <= 100; ++slice) {
        const double time = span.first + (span.last - span.first) * slice / 100;
        const auto value = valueAt(drawing, time);
        const auto same = valueAt(cut, time);
        RC_ASSERT(value.has_value() == same.has_value());
        RC_ASSERT(!value || *value == *same || (std::isnan(*value) && std::isnan(*same)));
    }
    for (const DrawnPiece& piece : cut.pieces) {
        RC_ASSERT(std::count_if(piece.times.begin(), piece.times.end(),
                                [&](double time) { return time < span.first; }) <= 1);
        RC_ASSERT(std::count_if(piece.times.begin(), piece.times.end(),
                                [&](double time) { return time > span.last; }) <= 1);
    }
}

RC_GTEST_PROP(Thinning, LeavesNothingOutNearAFailure, ()) {
    const SignalDrawing drawing = anyDrawing();
    const Samples all = samplesOf(drawing);
    Thinning thinning;
    thinning.buckets = 1;
    thinning.leaveAlone = 0;
    thinning.around = 3;
    auto failing = all.begin();
    std::advance(failing, *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(all)));
    thinning.fullAt = {{failing->first, failing->first}};
    const Samples kept = samplesOf(thinned(drawing, thinning));
    const auto position = std::distance(all.begin(), failing);
    std::ptrdiff_t i = 0;
    for (const auto& [time, value] : all) {
        RC_ASSERT(kept.contains(time) || i < position - 3 || i >= position + 3);
        ++i;
    }
}

std::vector<RecordingDrawing> drawingsOf(const std::string& assessments, const std::string& rows,
                                         const DrawingOptions& options = {}) {
    const AssessmentFile file = parseAssessmentFile(assessments, "a.toml");
    std::vector<RecordingDrawing> drawings;
    RunOptions run;
    run.assessed = [&](const AssessedRecording& assessed) {
        drawings.push_back(drawRecording(file, assessed, options));
    };
    assess(file, test::read(rows), run);
    return drawings;
}

constexpr const char* requirements = R"toml(
    definitions = { limit = "2 + 3" }
    assessment = [
        { name = "low", formula = "x < 5 & 3 > x | x < limit & x < 5" },
        { name = "wrong", formula = "nobody < 5" },
        { name = "on", formula = "on | mode == 'b' | x > inf" },
        { name = "holds", formula = "y > 0" },
    ])toml";
constexpr const char* switchedRows =
    "t,x,y,on,mode\n0,1,2,true,a\n1,7,2,false,b\n2,7,2,false,a\n3,1,2,true,a\n";

TEST(Drawing, IsOfTheSignalsOfWhatDidNotPass) {
    const auto drawings = drawingsOf(requirements, switchedRows);
    ASSERT_EQ(drawings.size(), 1U);
    const RecordingDrawing& drawing = drawings.front();
    std::vector<std::string> names;
    std::vector<DrawingKind> kinds;
    for (const SignalDrawing& signal : drawing.signals) {
        names.push_back(signal.name);
        kinds.push_back(signal.kind);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"x", "on", "mode"}));
    EXPECT_EQ(kinds, (std::vector<DrawingKind>{DrawingKind::Steps, DrawingKind::Switch,
                                               DrawingKind::Levels}));
    EXPECT_EQ(drawing.signals[2].levels, (std::vector<std::string>{"a", "b"}));
    ASSERT_EQ(drawing.assessments.size(), 4U);
    EXPECT_FALSE(drawing.assessments[1]);
    EXPECT_FALSE(drawing.assessments[3]);
    EXPECT_EQ(drawing.assessments[2]->signals, (std::vector<std::size_t>{1, 2, 0}));
    std::vector<double> thresholds;
    for (const Threshold& threshold : drawing.assessments[0]->thresholds) {
        EXPECT_EQ(threshold.signal, 0U);
        thresholds.push_back(threshold.value);
    }
    EXPECT_EQ(thresholds, (std::vector<double>{5, 3}));
    EXPECT_TRUE(drawing.assessments[2]->thresholds.empty());
}

TEST(Drawing, KnowsThatNothingIsKnownWhereTheRangeHasNoSamples) {
    const auto drawings = drawingsOf(
        R"(assessment = [{ name = "late", formula = "x < 5", from = 50 }])", switchedRows);
    const auto& open = drawings.front().assessments.front()->open;
    ASSERT_EQ(open.size(), 1U);
    EXPECT_EQ(open.front().start, 50 * second);
}

TEST(Drawing, UnderStrictIsAlsoOfWhatIsOpen) {
    const std::string file = R"(assessment = [{ name = "n", formula = "x < 5" }])";
    const std::string table = "t,x\n0,1\n3,1\n";
    DrawingOptions options;
    options.strict = true;
    EXPECT_FALSE(drawingsOf(file, table, options).front().assessments.front());
    const std::string open =
        R"toml(assessment = [{ name = "n", formula = "always[0, 2] (x < 5)" }])toml";
    EXPECT_FALSE(drawingsOf(open, table).front().assessments.front());
    EXPECT_TRUE(drawingsOf(open, table, options).front().assessments.front());
}

TEST(Drawing, IsOfEverythingOnRequest) {
    DrawingOptions options;
    options.drawsAll = true;
    const auto drawings = drawingsOf(requirements, switchedRows, options);
    EXPECT_TRUE(drawings.front().assessments[3]);
    EXPECT_FALSE(drawings.front().assessments[1]);  // could not be evaluated
}

// Times are whole, columns have a power of two of them, and values are small: no number is rounded.
RC_GTEST_PROP(ValueColumns, SpanAllValuesOfTheirTime, ()) {
    SignalDrawing drawing{"x", "", *rc::gen::element(DrawingKind::Lines, DrawingKind::Steps),
                          {},  {}, 0};
    double time = 0;
    for (int left = *rc::gen::inRange(0, 4); left > 0; --left) {
        DrawnPiece piece{{}, {}, 0};
        for (int samples = *rc::gen::inRange(1, 8); samples > 0; --samples) {
            time += *rc::gen::element(1, 2, 8, 32);
            piece.times.push_back(time);
            piece.values.push_back(*rc::gen::inRange(-8, 8) * 32);
        }
        time += *rc::gen::element(0, 4);
        piece.end = time;
        drawing.pieces.push_back(piece);
    }
    const double begin = 8.0 * *rc::gen::inRange(-2, 10);
    const std::size_t count = *rc::gen::inRange<std::size_t>(1, 12);
    const double width = 8;
    const CountedSpan span{begin, begin + width * static_cast<double>(count)};
    const auto columns = valueColumns(drawing, span, count);
    RC_ASSERT(columns.size() == count);
    constexpr int slices = 64;
    for (std::size_t i = 0; i < count; ++i) {
        const double from = begin + width * static_cast<double>(i);
        for (int slice = 0; slice < slices; ++slice) {
            const auto value = valueAt(drawing, from + width * slice / slices);
            RC_ASSERT(!value || columns[i]);
            RC_ASSERT(!value || (columns[i]->least <= *value && *value <= columns[i]->greatest));
        }
        if (columns[i]) {
            bool hasLeast = false;
            bool hasGreatest = false;
            // Lines are as close to a column's last time as they get to its end.
            for (int slice = 0; slice <= slices * slices; ++slice) {
                const double at = from + width * slice / (slices * slices);
                const auto value =
                    slice < slices * slices || drawing.kind == DrawingKind::Lines || at == span.last
                        ? valueAt(drawing, at)
                        : std::nullopt;
                hasLeast |= value == columns[i]->least;
                hasGreatest |= value == columns[i]->greatest;
            }
            RC_ASSERT(hasLeast && hasGreatest);
        }
    }
}

}  // namespace
}  // namespace vorm::evaluation
