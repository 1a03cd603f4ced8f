// What an independent reading of real recordings found must come out to the last digit. The
// recordings are not part of this tree; they may lie next to it.

#include <vorm/evaluation/assessment/assessment_draft.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/survey_report.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;

RecordingOutcome outcomeOf(const AssessmentFile& file, const std::string& path) {
    RunOptions options;
    options.jobs = 2;
    return run(file, {{{path}}}, options).recordings.at(0);
}

RecordingOutcome outcomeOf(const std::string& assessments, const std::string& recording) {
    return outcomeOf(
        readAssessmentFile(std::string(VORM_REAL_RECORDINGS_TESTS) + "/" + assessments),
        std::string(VORM_REAL_RECORDINGS) + "/" + recording);
}

// What becomes of the first assessments that a look at the recording suggests.
RecordingOutcome draftOutcome(const std::string& path) {
    const RecordingSurvey survey = surveyRecording({{path}}, {});
    EXPECT_FALSE(survey.signals.empty()) << path;
    EXPECT_NE(surveyReport(path, survey), "");
    return outcomeOf(parseAssessmentFile(assessmentDraft({{path, survey}}, {}), "draft"), path);
}

// The first failing intervals of an assessment, with times in full: `from..to `, or none.
struct Fact {
    std::string name;
    std::string failures;
};

class RealRecordings : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(VORM_REAL_RECORDINGS)) {
            GTEST_SKIP() << "the recordings are not there";
        }
    }

    static void expectFacts(const RecordingOutcome& outcome, const std::vector<Fact>& facts) {
        ASSERT_EQ(errorText(outcome.error), "");
        for (std::size_t i = 0; i < facts.size(); ++i) {
            const AssessmentOutcome& assessment = outcome.assessments.at(i);
            EXPECT_EQ(assessment.name, facts[i].name);
            EXPECT_EQ(errorText(assessment.error), "");
            EXPECT_EQ(assessment.verdict,
                      facts[i].failures.empty() ? resultEnum_t::PASS : resultEnum_t::FAIL)
                << assessment.name << assessment.reason;
            std::string found;
            for (const TimeSpan& interval : assessment.failures) {
                found += interval.start.text() + ".." + interval.end.text() + ' ';
            }
            EXPECT_EQ(found.substr(0, facts[i].failures.size()), facts[i].failures);
        }
    }
};

TEST_F(RealRecordings, Drone) {
    const RecordingOutcome outcome = outcomeOf("drone.toml", "drone");
    expectFacts(outcome, {{"altitude", "21.704..23 "},
                          {"descent", "22.904..26.6 "},
                          {"motors only when armed", ""},
                          {"motors", "16.604..28.204 "},
                          {"lands in time", ""}});
    // The mode changes at 22.132 and the landing comes 5.996 s later, the next one 2.008 s later.
    for (std::size_t i = 5; i < 8; ++i) {
        const AssessmentOutcome& assessment = outcome.assessments.at(i);
        ASSERT_EQ(assessment.failures.size(), i < 7 ? 1 : 0) << assessment.name;
        if (i < 7) {
            EXPECT_EQ(assessment.failures[0].start.text(), i == 5 ? "22.132" : "28.128");
        }
    }
    for (const AssessmentOutcome& assessment : outcome.assessments) {
        EXPECT_EQ(errorText(outcome.error) + errorText(assessment.error), "");
    }
    EXPECT_EQ(outcome.assessments[0].failures.size(), 1);
    EXPECT_EQ(outcome.assessments[1].failures.size(), 1);
}

TEST_F(RealRecordings, RoadSpeed) {
    const RecordingOutcome outcome = outcomeOf("road_can.toml", "road_can/speed.csv");
    expectFacts(outcome,
                {{"speed", "8.54969506967..12.44801936034 12.47485263101..12.535170005336 "}});
    EXPECT_EQ(outcome.assessments.at(0).failures.size(), 2);
}

TEST_F(RealRecordings, ElectricCar) {
    const RecordingOutcome outcome = outcomeOf("ev.toml", "ev/ev_trip.csv");
    expectFacts(outcome, {{"speed limit", "165..169 219..225 264..272 1029..1046 "},
                          {"excess ends",
                           "219..220 264..267 1029..1041 4367..4401 4509..4527 4983..4984 "
                           "5597..5601 5657..5659 5678..5686 "},
                          {"mode", "32..57 "}});
    EXPECT_EQ(outcome.assessments.at(0).failures.size(), 11);
    EXPECT_EQ(outcome.assessments.at(0).failed.text(), "133");
    EXPECT_EQ(outcome.assessments.at(1).failures.size(), 9);
}

TEST_F(RealRecordings, IntegersBeyondDouble) {
    const RecordingOutcome outcome = outcomeOf("simulation.toml", "simulation/int64_limits_in.csv");
    expectFacts(outcome,
                {{"largest integer", ""}, {"one less", "0..0 "}, {"smallest integer", ""}});
}

TEST_F(RealRecordings, JumpAsTwoRows) {
    expectFacts(outcomeOf("jump.toml", "simulation/repeated_time_in.csv"),
                {{"jump", "1..2 "}, {"text", "2..4 "}});
}

TEST_F(RealRecordings, RepeatedTimesNeedAWord) {
    const std::string radar = errorText(outcomeOf("radar.toml", "road_can/radar.csv").error);
    EXPECT_NE(radar.find("radar.csv:11:"), std::string::npos) << radar;
    EXPECT_NE(radar.find("equal_times"), std::string::npos) << radar;

    const std::string trace = "road_can/vehicle_trace.jsonl";
    const RecordingOutcome kept = outcomeOf("vehicle_trace.toml", trace);
    EXPECT_EQ(errorText(kept.error), "");
    EXPECT_EQ(kept.assessments.at(0).verdict, resultEnum_t::PASS);
    const std::string refused = errorText(outcomeOf("vehicle_trace_strict.toml", trace).error);
    EXPECT_NE(refused.find("vehicle_trace.jsonl:287"), std::string::npos) << refused;
}

TEST_F(RealRecordings, InstrumentsAreReadWithoutALayout) {
    struct Row {
        const char* assessments;
        const char* file;
        Fact fact;
        std::size_t failures;
    };
    for (const Row& row : {
             Row{"cycler_a.toml", "cycler_a.txt", {"voltage", "3120..11940 "}, 1},
             Row{"cycler_b.toml", "cycler_b.csv", {"voltage", "70138.255..70918.98 "}, 1},
             Row{"cycler_c.toml",
                 "cycler_c.csv",
                 {"voltage",
                  "4277.99..53663.29 67857.44..78544.04 83182.38..93434.38 98093.59..108294.75 "},
                 6},
             Row{"with_comments.toml",
                 "with_comments.lvm",
                 {"comment", "0..0.328878 7.961557..9.723275 "},
                 2},
         }) {
        SCOPED_TRACE(row.file);
        const RecordingOutcome outcome =
            outcomeOf(row.assessments, std::string("instruments/") + row.file);
        expectFacts(outcome, {row.fact});
        EXPECT_EQ(outcome.assessments.at(0).failures.size(), row.failures);
    }
    const RecordingOutcome cut = outcomeOf("cycler_a.toml", "instruments/cycler_a.txt");
    EXPECT_EQ(cut.assessments.at(0).to.text(), "12720");
    ASSERT_EQ(cut.warnings.size(), 1);
    EXPECT_NE(cut.warnings[0].find("last row has 9 of 28 cells and is left out"),
              std::string::npos);
}

TEST_F(RealRecordings, DraftsCanBeRunOnEveryFileAndFolder) {
    std::size_t files = 0;
    for (const auto& folder : std::filesystem::directory_iterator(VORM_REAL_RECORDINGS)) {
        if (!folder.is_directory()) {
            continue;
        }
        // The cars of its files are two, and their clocks years apart: they are no one recording.
        const bool isOneRecording = folder.path().filename() != "road_can";
        const RecordingOutcome whole = draftOutcome(folder.path().string());
        EXPECT_EQ(errorText(whole.error).find("too long for its times") == std::string::npos,
                  isOneRecording)
            << folder << errorText(whole.error);
        for (const auto& file : std::filesystem::directory_iterator(folder)) {
            const RecordingOutcome outcome = draftOutcome(file.path().string());
            EXPECT_EQ(errorText(outcome.error), "") << file;
            EXPECT_EQ(outcome.assessments.size(), 3) << file;
            for (const AssessmentOutcome& assessment : outcome.assessments) {
                EXPECT_EQ(errorText(assessment.error), "") << file;
            }
            ++files;
        }
    }
    EXPECT_GT(files, 0);
}

}  // namespace
}  // namespace vorm::evaluation
