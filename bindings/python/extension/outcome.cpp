#include "outcome.hpp"

#include "arrays.hpp"

#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/svg_report.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <pybind11/stl.h>

#include <limits>

namespace vorm::python {

namespace py = pybind11;
using evaluation::AssessmentOutcome;
using evaluation::RecordingDrawing;

py::object errorObject(const std::optional<evaluation::InputError>& error) {
    if (!error) {
        return py::none();
    }
    const evaluation::InputProblem& problem = error->problem();
    const auto known = [](auto value) {
        return value == 0 ? py::none() : py::object(py::int_(value));
    };
    const auto given = [](const std::string& text) {
        return text.empty() ? py::object(py::none()) : py::object(py::str(text));
    };
    return py::module_::import("vorm._errors")
        .attr("Error")(error->what(), given(problem.where.file), known(problem.where.line),
                       known(problem.where.column), given(problem.excerpt), given(problem.advice));
}

namespace {

struct AssessmentResult {
    RecordingResult recording;
    std::size_t number;

    const AssessmentOutcome& outcome() const { return recording.outcome().assessments[number]; }
    const RecordingDrawing* drawing() const {
        const RecordingDrawing* all = recording.run->drawingOf(recording.recording);
        return all != nullptr && all->assessments[number] ? all : nullptr;
    }
};

std::string why(const AssessmentResult& result, std::size_t mostIntervals) {
    const AssessmentOutcome& outcome = result.outcome();
    std::vector<std::string> lines{verdictText(outcome) + "  " + outcome.name};
    for (const std::string& text :
         {errorText(outcome.error), outcome.reason, neverTriggeredText(outcome)}) {
        if (!text.empty()) {
            lines.push_back(text);
        }
    }
    const auto& clock = result.recording.outcome().times.clock;
    const evaluation::TimeWriter times(clock);
    const std::size_t head = lines.size();
    for (const auto& more :
         {failureLines(outcome, mostIntervals, times), openLines(outcome, mostIntervals, times)}) {
        lines.insert(lines.end(), more.begin(), more.end());
    }
    // Results are dates in the zone of the data, which can be another one.
    if (clock && lines.size() > head) {
        lines.push_back("dates in " + clock->zoneName());
    }
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

// The samples of a signal in one array each, with a NaN between its pieces so that no line is drawn
// there; what is held ends with its last value.
py::tuple curveOf(const evaluation::SignalDrawing& signal, const evaluation::Timeline& timeline,
                  TimeForm form) {
    std::vector<evaluation::ExactTime> times;
    std::vector<double> values;
    const auto push = [&](double time, double value) {
        times.push_back(timeline.timeAt(time));
        values.push_back(value);
    };
    for (const evaluation::DrawnPiece& piece : signal.pieces) {
        for (std::size_t i = 0; i < piece.times.size(); ++i) {
            push(piece.times[i], piece.values[i]);
        }
        if (piece.end > piece.times.back()) {
            push(piece.end, piece.values.back());
        }
        push(piece.end, std::numeric_limits<double>::quiet_NaN());
    }
    return py::make_tuple(timeArray(times, form), arrayOf(values));
}

// Of each signal that is drawn what a plot needs: name, unit, whether it runs along lines, the
// names of its levels, its curve and the constants that it is compared with.
py::list drawingOf(const AssessmentResult& result, TimeForm form) {
    py::list signals;
    const RecordingDrawing* drawing = result.drawing();
    if (drawing == nullptr) {
        return signals;
    }
    const evaluation::AssessmentDrawing& drawn = *drawing->assessments[result.number];
    for (const std::size_t number : drawn.signals) {
        const evaluation::SignalDrawing& signal = drawing->signals[number];
        std::vector<double> thresholds;
        for (const evaluation::Threshold& threshold : drawn.thresholds) {
            if (threshold.signal == number) {
                thresholds.push_back(threshold.value);
            }
        }
        signals.append(py::make_tuple(signal.name, signal.unit,
                                      signal.kind == evaluation::DrawingKind::Lines, signal.levels,
                                      curveOf(signal, drawing->timeline, form), thresholds));
    }
    return signals;
}

std::string svg(const AssessmentResult& result, std::size_t width) {
    const RecordingDrawing* drawing = result.drawing();
    return drawing == nullptr
               ? ""
               : svgReport(result.recording.outcome(), result.number, *drawing, {width});
}

py::object firstFailure(const AssessmentResult& result, TimeForm form) {
    const auto& failures = result.outcome().failures;
    return failures.empty() ? py::none() : timeObject(failures.front().start, form);
}

py::object robustnessOf(const AssessmentResult& result) {
    const AssessmentOutcome& outcome = result.outcome();
    return outcome.leastRobustness && outcome.greatestRobustness
               ? py::object(py::make_tuple(*outcome.leastRobustness, *outcome.greatestRobustness))
               : py::none();
}

}  // namespace

void addOutcomes(py::module_& module) {
    py::class_<RecordingResult>(module, "RecordingResult")
        .def_property_readonly(
            "name", [](const RecordingResult& result) { return result.outcome().recording; })
        .def_property_readonly(
            "error",
            [](const RecordingResult& result) { return errorObject(result.outcome().error); })
        .def_property_readonly(
            "warnings", [](const RecordingResult& result) { return result.outcome().warnings; })
        .def_property_readonly("assessments", [](const RecordingResult& result) {
            std::vector<AssessmentResult> results;
            for (std::size_t i = 0; i < result.outcome().assessments.size(); ++i) {
                results.push_back({result, i});
            }
            return results;
        });

    const auto text = [](std::string AssessmentOutcome::*member) {
        return [member](const AssessmentResult& result) { return result.outcome().*member; };
    };
    const auto seconds = [](evaluation::ExactTime AssessmentOutcome::*member) {
        return [member](const AssessmentResult& result) {
            return (result.outcome().*member).seconds();
        };
    };
    const auto spans = [](std::vector<evaluation::TimeSpan> AssessmentOutcome::*member) {
        return [member](const AssessmentResult& result, TimeForm form) {
            return spanArray(result.outcome().*member, form);
        };
    };
    py::class_<AssessmentResult>(module, "AssessmentResult")
        .def_property_readonly("name", text(&AssessmentOutcome::name))
        .def_property_readonly("description", text(&AssessmentOutcome::description))
        .def_property_readonly("formula", text(&AssessmentOutcome::formula))
        .def_property_readonly(
            "severity",
            [](const AssessmentResult& result) { return nameOf(result.outcome().severity); })
        .def_property_readonly("tags",
                               [](const AssessmentResult& result) { return result.outcome().tags; })
        .def_property_readonly(
            "verdict", [](const AssessmentResult& result) { return verdictText(result.outcome()); })
        .def_property_readonly(
            "error",
            [](const AssessmentResult& result) { return errorObject(result.outcome().error); })
        .def_property_readonly("passed", seconds(&AssessmentOutcome::passed))
        .def_property_readonly("failed", seconds(&AssessmentOutcome::failed))
        .def_property_readonly("open", seconds(&AssessmentOutcome::open))
        .def_property_readonly(
            "passes_throughout",
            [](const AssessmentResult& result) { return result.outcome().passesThroughout(); })
        .def_property_readonly("robustness", &robustnessOf)
        .def_property_readonly("robustness_error",
                               [](const AssessmentResult& result) {
                                   return errorObject(result.outcome().robustnessError);
                               })
        .def_property_readonly(
            "failure_count",
            [](const AssessmentResult& result) { return result.outcome().failures.size(); })
        .def("first_failure", &firstFailure, py::arg("form"))
        .def("failures", spans(&AssessmentOutcome::failures), py::arg("form"))
        .def("open_spans", spans(&AssessmentOutcome::openSpans), py::arg("form"))
        .def("why", &why, py::arg("most_intervals"))
        .def("drawing", &drawingOf, py::arg("form"))
        .def("svg", &svg, py::arg("width"));
}

}  // namespace vorm::python
