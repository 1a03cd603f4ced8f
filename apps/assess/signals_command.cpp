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
    std::string report;
    for (const RecordingSource& source : recordingsOf(options)) {
        const auto signals = surveyRecording(source, layout);
        report += options.format == Format::Json ? surveyJson(source.name(), signals)
                                                 : surveyReport(source.name(), signals);
    }
    writeResults(options, report);
    return ExitCode::NothingFailed;
}

}  // namespace assess
