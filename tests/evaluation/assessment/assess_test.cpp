#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/explanation.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/recording/recording_in_memory.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

namespace vorm::evaluation {
namespace {

AssessmentFile fileWith(const std::string& assessments) {
    return parseAssessmentFile(assessments, "limits.toml");
}

AssessmentFile threeAssessments() {
    return fileWith(R"toml(
        assessment = [
            { name = "low", formula = "x < 5" },
            { name = "wrong", formula = "nobody < 5" },
            { name = "soon", formula = "x > 1 -> eventually[0, 1 s](y > 0)" },
        ])toml");
}

Recording twoSignals() {
    return test::read("t,x,y\n0,1,0\n2.5,7,0\n3,2,0\n6,2,0\n");
}

// Windows that reach far beyond a short recording must not move its instants.
TEST(Assess, LooksFarBesideAShortRecording) {
    const std::vector<double> seconds{10, 10.7};
    const std::array<bool, 2> b{true, false};
    const Recording recording =
        recordingOf("short", {{"b", NumberTimes{seconds}, SampleView<bool>(b)}});
    const AssessmentFile file = fileWith(R"toml(
        assessment = [
            { name = "fails", formula = "fall(b) -> ~always[-10 s, 0](eventually[0, 10 s](fall(b)))" },
            { name = "passes", formula = "eventually[-60, 0](~b) -> fall(b)" },
        ])toml");
    const RecordingOutcome outcome = assess(file, recording);
    EXPECT_EQ(verdictText(outcome.assessments[0]), "FAIL");
    EXPECT_EQ(verdictText(outcome.assessments[1]), "PASS");
}

// A window that reaches into a hole is open, also where the hole follows NaN and is shorter than
// the unit that times are counted in.
TEST(Assess, HasHolesShorterThanItsResolution) {
    const AssessmentFile file = fileWith(R"toml(
        recording = { resolution = "s", interpolation = "linear", max_gap = "100 ms" }
        assessment = [{ name = "a", formula = "min[0, 0.2 s](x) > 0", from = "0.2 s" }])toml");
    const Recording recording =
        test::read("t,x\n0,1\n0.05,1\n0.1,nan\n0.15,nan\n0.4,1\n0.5,1\n", file.layout);
    const RecordingOutcome outcome = assess(file, recording);
    EXPECT_EQ(verdictText(outcome.assessments[0]), "NO_RESULT");
}

TEST(Assess, JudgesARecording) {
    const RecordingOutcome outcome = assess(threeAssessments(), twoSignals());
    EXPECT_EQ(outcome.recording, "r.csv");
    EXPECT_FALSE(outcome.error);
    ASSERT_EQ(outcome.assessments.size(), 3U);
    EXPECT_EQ(verdictText(outcome.assessments[0]), "FAIL");
    ASSERT_EQ(outcome.assessments[0].failures.size(), 1U);
    EXPECT_EQ(TimeWriter().interval(outcome.assessments[0].failures[0]), "from 2.5 s to 3 s");
    EXPECT_EQ(verdictText(outcome.assessments[1]), "ERROR");
    ASSERT_TRUE(outcome.assessments[1].error);
    const InputProblem& problem = outcome.assessments[1].error->problem();
    EXPECT_EQ(problem.message, "unknown signal 'nobody'");
    EXPECT_EQ(problem.where.file, "limits.toml");
    EXPECT_EQ(problem.where.line, 4U);
    ASSERT_EQ(outcome.assessments[2].failures.size(), 1U);
    EXPECT_EQ(TimeWriter().interval(outcome.assessments[2].failures[0]), "from 2.5 s to 5 s");
    EXPECT_EQ(outcome.assessments[2].open.text(), "1");
}

TEST(Assess, TakesOnlyThoseAskedFor) {
    RunOptions options;
    options.only = {"soon"};
    const RecordingOutcome outcome = assess(threeAssessments(), twoSignals(), options);
    ASSERT_EQ(outcome.assessments.size(), 1U);
    EXPECT_EQ(outcome.assessments[0].name, "soon");
    options.only = {"soom"};
    EXPECT_THROW(assess(threeAssessments(), twoSignals(), options), InputError);
}

TEST(Assess, ExplainsARecording) {
    const AssessmentFile file = threeAssessments();
    const Explanation explanation = explain(file, file.find("low"), twoSignals());
    EXPECT_EQ(verdictText(explanation.outcome), "FAIL");
    ASSERT_EQ(explanation.outcome.explanations.size(), 1U);
    EXPECT_EQ(whenText(explanation.outcome.explanations[0].causes.at(0), TimeWriter()),
              "from 2.5 s to 3 s");
    // The values live on when the recording is gone.
    EXPECT_EQ(explanation.subFormulas.at(1).pieces->front().getStartTime(),
              explanation.timeline.at(ExactTime()));
    EXPECT_THROW(explain(file, file.find("wrong"), twoSignals()), InputError);
}

// What a caller keeps of a recording.
struct Kept {
    std::string name;
    std::vector<std::string> verdicts;
    std::vector<SharedTruth> truths;
    SharedPieces x;
};

TEST(Assess, ShowsRecordingsWhileTheirSignalsLive) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("assess_test_" + std::to_string(::getpid()));
    std::filesystem::create_directory(folder);
    std::vector<RecordingSource> sources;
    for (int i = 0; i < 6; ++i) {
        const auto path = folder / (std::to_string(i) + ".csv");
        std::ofstream(path) << (i == 3 ? "a,b,c\n" : "t,x,y\n0,1,0\n") << i + 1 << ",9,0\n10,1,0\n";
        sources.push_back({{path.string()}});
    }
    std::map<std::size_t, Kept> kept;  // without a lock: calls come one at a time
    RunOptions options;
    options.jobs = 4;
    options.assessed = [&](const AssessedRecording& assessed) {
        Kept& one = kept[assessed.number];
        one.name = assessed.recording.name;
        for (const AssessmentOutcome& outcome : assessed.outcome.assessments) {
            one.verdicts.push_back(verdictText(outcome));
        }
        one.truths = assessed.truths;
        one.x = assessed.recording.find("x")->pieces;
    };
    run(threeAssessments(), sources, options);
    std::filesystem::remove_all(folder);

    EXPECT_EQ(kept.size(), 5U);
    EXPECT_FALSE(kept.contains(3));
    for (const auto& [number, one] : kept) {
        EXPECT_EQ(one.name, sources[number].paths[0]);
        EXPECT_EQ(one.verdicts, (std::vector<std::string>{"FAIL", "ERROR", "FAIL"}));
        ASSERT_EQ(one.truths.size(), 3U);
        EXPECT_EQ(one.truths[1], nullptr);
        // x leaves its limit at the second of its file, and with it the truth changes.
        const double jump = one.x->front().get<double>().points.at(1).time;
        EXPECT_EQ(one.truths[0]->valueAt(jump), certainlyFalse);
        EXPECT_EQ(one.truths[0]->valueAt(jump - 1), certainlyTrue);
    }
}

TEST(Assess, WhatTheCallerThrowsEndsTheRun) {
    RunOptions options;
    options.assessed = [](const AssessedRecording&) { failAt({}, "enough"); };
    EXPECT_THROW(assess(threeAssessments(), twoSignals(), options), InputError);
}

// What waits for a recording that takes long does not pile up.
TEST(Assess, RunsOnlySoFarAheadOfARecordingThatTakesLong) {
    std::atomic<std::size_t> furthest = 0;
    RecordingQueue recordings;
    recordings.count = 3000;
    recordings.at = [&](std::size_t number) {
        furthest = std::max<std::size_t>(furthest, number);
        if (number == 0) {
            for (int i = 0; furthest < 999 && i < 10'000; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_EQ(furthest, 999U);
        }
        return RecordingSource{{"nowhere.csv"}};
    };
    RunOptions options;
    options.jobs = 2;
    std::size_t taken = 0;
    runEach(threeAssessments(), recordings, options,
            [&](RecordingOutcome&&, std::size_t) { ++taken; });
    EXPECT_EQ(taken, 3000U);
}

// Recordings that are on the way when the call throws are done, too: the time it takes lets them.
TEST(Assess, TellsNothingMoreWhenTheCallerHasThrown) {
    const RecordingQueue missing{
        50, [](std::size_t) { return RecordingSource{{"nowhere.csv"}}; }, {}};
    for (int i = 0; i < 10; ++i) {
        RunOptions options;
        options.jobs = 4;
        int told = 0;
        const auto take = [&](RecordingOutcome&&, std::size_t) {
            EXPECT_EQ(++told, 1);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            failAt({}, "no room");
        };
        EXPECT_THROW(runEach(threeAssessments(), missing, options, take), InputError);
    }
}

}  // namespace
}  // namespace vorm::evaluation
