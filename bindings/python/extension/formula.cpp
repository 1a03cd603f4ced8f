#include "formula.hpp"

#include "arrays.hpp"
#include "unlocked.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/assessment/evaluate_formula.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorm::python {

namespace py = pybind11;
using evaluation::ExactTime;
using evaluation::FormulaOutcome;
using evaluation::Recording;

namespace {

FormulaOutcome evaluate(const evaluation::ParsedFormula& formula, const Recording& recording,
                        bool robustness) {
    return unlocked([&](const Progress& progress) {
        evaluation::RunOptions options;
        options.robustness = robustness;
        options.progress = progress;
        return evaluation::evaluate(formula.text(), recording, options);
    });
}

// The times at which truth changes, and what it is from there on; at last the end with the last
// value.
py::tuple truth(const evaluation::ParsedFormula& formula, const Recording& recording,
                TimeForm form) {
    const FormulaOutcome outcome = evaluate(formula, recording, false);
    std::vector<ExactTime> times;
    std::vector<std::int8_t> values;
    for (const auto& [span, value] : outcome.truth) {
        times.push_back(span.start);
        values.push_back(value);
    }
    if (!times.empty() && !outcome.truth.back().span.isInstant()) {
        times.push_back(outcome.truth.back().span.end);
        values.push_back(values.back());
    }
    return py::make_tuple(timeArray(times, form), arrayOf(values));
}

py::array failures(const evaluation::ParsedFormula& formula, const Recording& recording,
                   TimeForm form) {
    std::vector<evaluation::TimeSpan> spans;
    for (const auto& [span, value] : evaluate(formula, recording, false).truth) {
        if (value == evaluation::certainlyFalse) {
            spans.push_back(span);
        }
    }
    return spanArray(spans, form);
}

using Numbers = assessments::TimedTrace_T<double>;

const Numbers& numbersIn(const evaluation::SharedPieces& pieces) {
    return pieces->front().get<double>();
}

// The times of both traces in a closed range, each once, and the ends of the range.
std::vector<double> timesOf(const Numbers& a, const Numbers& b, double from, double to) {
    std::vector<double> times{from, to};
    for (const Numbers* trace : {&a, &b}) {
        for (const auto& point : trace->points) {
            if (point.time > from && point.time < to) {
                times.push_back(point.time);
            }
        }
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

// The value just before a time: a held trace has that of the sample before, a linear one no other.
std::optional<double> valueBefore(const Numbers& trace, double time) {
    return trace.valueAt(trace.interpolation == assessments::INTERPOLATION_METHOD::ZOH
                             ? assessments::support::previousTime(time)
                             : time);
}

// What both bounds are where they are equal, else NaN: the recording does not decide it.
double decided(std::optional<double> least, std::optional<double> greatest) {
    return least && greatest && *least == *greatest ? *least
                                                    : std::numeric_limits<double>::quiet_NaN();
}

// Rows between which the robustness runs along straight lines: two where it steps, first what it
// was just before. NaN where the recording does not decide it.
py::tuple robustness(const evaluation::ParsedFormula& formula, const Recording& recording,
                     TimeForm form) {
    const FormulaOutcome outcome = evaluate(formula, recording, true);
    std::vector<ExactTime> times;
    std::vector<double> values;
    const auto push = [&](double time, double value) {
        times.push_back(recording.timeline.timeAt(time));
        values.push_back(value);
    };
    if (!outcome.truth.empty()) {
        const Numbers& least = numbersIn(outcome.leastRobustness);
        const Numbers& greatest = numbersIn(outcome.greatestRobustness);
        const double from = recording.timeline.at(outcome.truth.front().span.start);
        const double to = recording.timeline.at(outcome.truth.back().span.end);
        for (const double time : timesOf(least, greatest, from, to)) {
            const double before = decided(valueBefore(least, time), valueBefore(greatest, time));
            const double value = decided(least.valueAt(time), greatest.valueAt(time));
            const bool isStep = before != value && !(std::isnan(before) && std::isnan(value));
            if (time > from && isStep) {
                push(time, before);
            }
            push(time, value);
        }
    }
    return py::make_tuple(timeArray(times, form), arrayOf(values));
}

}  // namespace

void addFormulas(py::module_& module) {
    py::class_<evaluation::ParsedFormula>(module, "Formula")
        .def(py::init<std::string>(), py::arg("text"))
        .def_property_readonly("names", &evaluation::ParsedFormula::names)
        .def("truth", &truth, py::arg("recording"), py::arg("form"))
        .def("failures", &failures, py::arg("recording"), py::arg("form"))
        .def("robustness", &robustness, py::arg("recording"), py::arg("form"));
}

}  // namespace vorm::python
