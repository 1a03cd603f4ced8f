#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/report/survey_report.hpp>

namespace assess {

using namespace vorm::evaluation;

ExitCode showSignals(const Options& options) {
    RecordingLayout layout;
    if (!options.assessments.empty()) {
        layout = readAssessmentFile(options.assessments).layout;
    }
    std::vector<std::pair<std::string, std::vector<SignalSurvey>>> surveys;
    std::string tables;
    for (const RecordingSource& source : recordingsOf(options)) {
        surveys.emplace_back(source.name(), surveyRecording(source, layout));
        tables += surveyReport(source.name(), surveys.back().second);
    }
    writeResults(options, options.format == "json" ? surveyJson(surveys) : tables);
    return ExitCode::NothingFailed;
}

}  // namespace assess
