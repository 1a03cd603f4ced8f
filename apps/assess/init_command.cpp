#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/assessment_draft.hpp>

namespace assess {

using namespace vorm::evaluation;

ExitCode draftAssessments(const Options& options) {
    const RecordingLayout layout = layoutOf(options);
    RecordingSurveys surveys;
    for (const RecordingSource& source : recordingsOf(options)) {
        surveys.emplace_back(source.name(), surveyRecording(source, layout));
    }
    writeResults(options, assessmentDraft(surveys, options.layout));
    return ExitCode::NothingFailed;
}

}  // namespace assess
