#pragma once

// The signals of the recordings that assessments are drafted for; included by assessment_draft.cpp
// only.

#include <vorm/evaluation/recording/recording_survey.hpp>
#include <vorm/evaluation/source/recording_file.hpp>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation::detail {

/// An example of a requirement on one signal.
struct DraftAssessment {
    std::string name;
    std::string formula;
};

/// The signals of several recordings, each once. Those of files without times are left out.
class DraftSignals {
public:
    explicit DraftSignals(const RecordingSurveys& recordings);

    /// The lines of [signals]; those without a type that could be declared are comments.
    std::string text() const;

    /// The first kind of example of the first signal that all recordings have alike, the second of
    /// the second, and so on; none where there is no such signal.
    std::vector<DraftAssessment> examples() const;

private:
    struct Entry {
        std::string name;
        std::string place;                 // keys that say where it is, if its name does not
        SignalSurvey signal;               // of the first recording that has it
        std::vector<std::string> members;  // that it has in all of them
        std::set<std::string> types;
        std::size_t recordings = 0;

        bool hasType() const;
    };

    void addRecording(const RecordingSurvey& survey);
    void add(const SignalSurvey& signal, const RecordingFile* file);
    static std::vector<DraftAssessment> examplesOn(const Entry& entry);
    static std::string lineOf(const Entry& entry);

    std::size_t recordings_;
    std::vector<Entry> entries_;
    std::map<std::string, std::size_t> places_;  // of the entry of that name
};

}  // namespace vorm::evaluation::detail
