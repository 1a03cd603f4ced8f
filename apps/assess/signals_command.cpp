#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/report/survey_report.hpp>

namespace assess {

using namespace vorm::evaluation;

ExitCode showSignals(const Options& options) {
    const RecordingLayout layout = layoutOf(options);
    RecordingSurveys surveys;
    std::string tables;
    for (const RecordingSource& source : recordingsOf(options)) {
        surveys.emplace_back(source.name(), surveyRecording(source, layout));
        tables += surveyReport(source.name(), surveys.back().second, terminalWidth(options));
    }
    writeResults(options, options.format == "json" ? surveyJson(surveys) : tables);
    return ExitCode::NothingFailed;
}

}  // namespace assess
