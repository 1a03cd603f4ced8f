#pragma once

// Texts in, verdicts out: what the program makes of a recording and requirements, in exact numbers.

#include "truth_course.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace vorm::evaluation::test {

/// A recording and requirements as files.
struct Texts {
    std::string recordingName = "r.csv";
    std::string recording;
    std::string assessments;
};

/// What is reported of a requirement, in seconds.
struct Reported {
    std::string formula;
    std::string error;
    Judgement judgement;
};

inline Rational rational(ExactTime time) {
    return rationalOf(time.text());
}

inline std::vector<Span> spansOf(const std::vector<TimeSpan>& times) {
    std::vector<Span> spans;
    for (const TimeSpan& time : times) {
        spans.push_back({rational(time.start), rational(time.end)});
    }
    return spans;
}

inline Reported reported(const AssessmentOutcome& outcome) {
    Reported result{outcome.formula, errorText(outcome.error), {}};
    Judgement& judgement = result.judgement;
    judgement.verdict = verdictText(outcome);
    judgement.from = rational(outcome.from);
    judgement.to = rational(outcome.to);
    judgement.failures = spansOf(outcome.failures);
    judgement.openSpans = spansOf(outcome.openSpans);
    judgement.passed = rational(outcome.passed);
    judgement.failed = rational(outcome.failed);
    judgement.open = rational(outcome.open);
    return result;
}

/// A folder that lives as long as the program.
inline const std::filesystem::path& scratchFolder() {
    struct Folder {
        std::filesystem::path path;
        Folder() {
            std::string pattern =
                (std::filesystem::temp_directory_path() / "exactness_XXXXXX").string();
            if (::mkdtemp(pattern.data()) == nullptr) {
                throw std::runtime_error("no folder for recordings");
            }
            path = pattern;
        }
        ~Folder() { std::filesystem::remove_all(path); }
        Folder(const Folder&) = delete;
        Folder& operator=(const Folder&) = delete;
    };
    static const Folder folder;
    return folder.path;
}

/// One for each requirement, in their order. Throws where the recording cannot be used.
inline std::vector<Reported> assessed(const Texts& texts) {
    const auto path = scratchFolder() / texts.recordingName;
    std::ofstream(path, std::ios::binary) << texts.recording;
    const RunOutcome outcome =
        run(parseAssessmentFile(texts.assessments, "requirements.toml"), {{{path.string()}}});
    const RecordingOutcome& recording = outcome.recordings.at(0);
    if (recording.error) {
        throw InputError(*recording.error);
    }
    std::vector<Reported> result;
    for (const AssessmentOutcome& assessment : recording.assessments) {
        result.push_back(reported(assessment));
    }
    return result;
}

}  // namespace vorm::evaluation::test
