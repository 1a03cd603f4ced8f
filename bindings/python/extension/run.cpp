#include "run.hpp"

#include "outcome.hpp"
#include "unlocked.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/html_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/text/file_text.hpp>

#include <pybind11/stl.h>

#include <algorithm>

namespace vorm::python {

namespace py = pybind11;
using evaluation::AssessedRecording;
using evaluation::RecordingDrawing;
using evaluation::RunOptions;

const RecordingDrawing* Run::drawingOf(std::size_t recording) const {
    const auto found = std::find_if(
        drawings.begin(), drawings.end(),
        [=](const RecordingDrawing& drawing) { return drawing.recording == recording; });
    return found == drawings.end() ? nullptr : &*found;
}

namespace {

evaluation::RunOutcome withoutRecordings(const File& file, bool strict) {
    const evaluation::AssessmentFile& content = file.content();
    return {content.name, content.title, {}, strict, content.parameters};
}

// Of a run that keeps what it draws: plots of whatever one asks for later.
RunOptions optionsOf(Run& run, const std::vector<std::string>& only, unsigned jobs, bool robustness,
                     bool strict) {
    RunOptions options;
    options.only = only;
    options.jobs = jobs;
    options.robustness = robustness;
    options.strict = strict;
    options.explain = true;
    options.assessed = [&run](const AssessedRecording& assessed) {
        evaluation::DrawingOptions drawing;
        drawing.drawsAll = true;
        run.drawings.push_back(drawRecording(run.file.content(), assessed, drawing));
    };
    return options;
}

Run assess(const File& file, const evaluation::Recording& recording,
           const std::vector<std::string>& only, unsigned jobs, bool robustness, bool strict) {
    Run run{file, withoutRecordings(file, strict), {}};
    RunOptions options = optionsOf(run, only, jobs, robustness, strict);
    run.outcome.recordings.push_back(unlocked([&](const Progress& progress) {
        options.progress = progress;
        return evaluation::assess(file.content(), recording, options);
    }));
    return run;
}

Run read(const File& file, const std::vector<std::vector<std::string>>& recordings,
         const std::vector<std::string>& only, unsigned jobs, bool robustness, bool strict) {
    Run run{file, {}, {}};
    RunOptions options = optionsOf(run, only, jobs, robustness, strict);
    std::vector<evaluation::RecordingSource> sources;
    for (const std::vector<std::string>& paths : recordings) {
        sources.push_back({paths});
    }
    run.outcome = unlocked([&](const Progress& progress) {
        options.progress = progress;
        return evaluation::run(file.content(), sources, options);
    });
    return run;
}

// A line of JSON for each recording; nothing else is kept.
std::vector<std::string> lines(const File& file, const std::vector<std::string>& paths,
                               const std::vector<std::string>& only, unsigned jobs, bool robustness,
                               bool strict, bool explain) {
    RunOptions options;
    options.only = only;
    options.jobs = jobs;
    options.robustness = robustness;
    options.strict = strict;
    options.explain = explain;
    const evaluation::RunOutcome about = withoutRecordings(file, strict);
    const evaluation::RecordingQueue queue{
        paths.size(), [&](std::size_t i) { return evaluation::RecordingSource{{paths[i]}}; }, {}};
    std::vector<std::string> lines;
    workUnlocked([&](const Progress& progress) {
        options.progress = progress;
        runEach(file.content(), queue, options,
                [&](evaluation::RecordingOutcome&& recording, std::size_t) {
                    lines.push_back(jsonLine(about, recording));
                });
    });
    return lines;
}

// The line of a recording of which nothing can be known.
std::string errorLine(const File& file, const std::string& path, const std::string& message,
                      const std::string& advice, bool strict) {
    evaluation::InputProblem problem;
    problem.message = message;
    problem.where.file = path;
    problem.advice = advice;
    return jsonLine(withoutRecordings(file, strict),
                    {path, evaluation::InputError(std::move(problem)), {}, {}, {}});
}

// One run of the recordings of several with the same file.
Run joined(const std::vector<Run*>& runs) {
    Run all{runs.at(0)->file, runs[0]->outcome, runs[0]->drawings};
    for (std::size_t i = 1; i < runs.size(); ++i) {
        for (RecordingDrawing drawing : runs[i]->drawings) {
            drawing.recording += all.outcome.recordings.size();
            all.drawings.push_back(std::move(drawing));
        }
        all.outcome.recordings.insert(all.outcome.recordings.end(),
                                      runs[i]->outcome.recordings.begin(),
                                      runs[i]->outcome.recordings.end());
    }
    return all;
}

void writeHtml(const Run& run, const std::string& path, const std::string& date,
               std::size_t mostBytes) {
    evaluation::HtmlStyle style;
    style.program = "vorm " VORM_VERSION;
    style.date = date;
    style.mostBytes = mostBytes;
    const py::gil_scoped_release unlock;
    evaluation::writeFile(path, htmlReport(run.file.content(), run.outcome, run.drawings, style));
}

}  // namespace

void addRuns(py::module_& module) {
    py::class_<Run, std::shared_ptr<Run>>(module, "Run")
        .def_static("assess", &assess, py::arg("file"), py::arg("recording"), py::arg("only"),
                    py::arg("jobs"), py::arg("robustness"), py::arg("strict"))
        .def_static("read", &read, py::arg("file"), py::arg("recordings"), py::arg("only"),
                    py::arg("jobs"), py::arg("robustness"), py::arg("strict"))
        .def_static("joined", &joined, py::arg("runs"))
        .def_property_readonly("is_strict", [](const Run& run) { return run.outcome.strict; })
        .def_property_readonly("recordings",
                               [](const std::shared_ptr<Run>& run) {
                                   std::vector<RecordingResult> results;
                                   for (std::size_t i = 0; i < run->outcome.recordings.size();
                                        ++i) {
                                       results.push_back({run, i});
                                   }
                                   return results;
                               })
        .def("json", [](const Run& run) { return jsonReport(run.outcome); })
        .def_static("lines", &lines, py::arg("file"), py::arg("paths"), py::arg("only"),
                    py::arg("jobs"), py::arg("robustness"), py::arg("strict"), py::arg("explain"))
        .def_static("error_line", &errorLine, py::arg("file"), py::arg("path"), py::arg("message"),
                    py::arg("advice"), py::arg("strict"))
        .def("write_html", &writeHtml, py::arg("path"), py::arg("date"), py::arg("most_bytes"));
}

}  // namespace vorm::python
