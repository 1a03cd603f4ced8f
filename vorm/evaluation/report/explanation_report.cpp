#include "explanation_report.hpp"

#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>

namespace vorm::evaluation {
namespace {

using namespace assessments;

struct Window {
    double from;
    double to;
};

Window around(const FailingInterval& interval, const AssessmentOutcome& outcome,
              const ExplanationStyle& style) {
    const double length = interval.end - interval.start;
    const double range = outcome.to - outcome.from;
    const double margin = style.margin.value_or(std::max(length / 2, range / 100));
    return {interval.start - margin, interval.end + margin};
}

// Texts of the values of one sub-formula.
class ValueText {
public:
    explicit ValueText(const Enumeration* enumeration) : enumeration_(enumeration) {}

    std::string operator()(bool value) const { return value ? "true" : "FALSE"; }
    std::string operator()(const Verdict& value) const { return verdictName(value.get()); }
    std::string operator()(const ValueType<FixedPoint>& value) const { return value.get().text(); }
    std::string operator()(const HalfFloat& value) const {
        return durationText(static_cast<double>(value));
    }
    std::string operator()(double value) const { return durationText(value); }
    std::string operator()(float value) const { return durationText(double{value}); }
    std::string operator()(std::int32_t value) const {
        const bool isMember = enumeration_ != nullptr && value >= 0 &&
                              static_cast<std::size_t>(value) < enumeration_->members.size();
        return isMember ? enumeration_->members[static_cast<std::size_t>(value)]
                        : std::to_string(value);
    }
    template <class Integer>
    std::string operator()(Integer value) const {
        return std::to_string(value);
    }

private:
    const Enumeration* enumeration_;
};

struct Change {
    double time;
    std::string value;
};

// The values in the window, in time order; thinned where there are too many.
std::vector<Change> changesIn(const TimedTrace& piece, const Window& window, std::size_t most,
                              const ValueText& text) {
    const double from = std::max(window.from, piece.getStartTime());
    const double to = std::min(window.to, piece.getLastKnownTime());
    std::vector<Change> changes;
    if (!(from <= to)) {
        return changes;
    }
    // Each bucket keeps its least and its greatest value.
    const double bucket = 2 * (to - from) / static_cast<double>(most);
    return piece.visit([&](const auto& trace) {
        auto part = trace.extractWindow(from, to, 0);
        if (part.points.size() > most && bucket > 0) {
            part.decimate(bucket);
        }
        for (const auto& point : part.points) {
            changes.push_back({std::max(from, point.time), text(point.value)});
        }
        const auto last = part.valueAt(to);
        if (part.interpolation == INTERPOLATION_METHOD::LINEAR && last &&
            (changes.empty() || changes.back().time < to)) {
            changes.push_back({to, text(*last)});
        }
        return changes;
    });
}

std::string courseText(const ExplainedFormula& formula, const Window& window, std::size_t most) {
    if (formula.pieces == nullptr) {
        return "could not be evaluated";
    }
    const ValueText text(formula.enumeration.get());
    std::string course;
    for (const TimedTrace& piece : *formula.pieces) {
        for (const Change& change : changesIn(piece, window, most, text)) {
            course += (course.empty() ? "" : ", ") + change.value + " at " + timeText(change.time);
        }
    }
    return course.empty() ? "not known here" : course;
}

std::string culpritText(const Culprit& culprit) {
    const std::string state = culprit.text + " is " + (culprit.value ? "true " : "false ");
    const double after = std::nextafter(culprit.to, std::numeric_limits<double>::infinity());
    // The digits that are shown do not tell a time from the one before it.
    if (culprit.from == culprit.to && std::strtod(timeText(culprit.to).c_str(), nullptr) == after) {
        return state + "just before " + timeText(after) + " s";
    }
    return state + intervalText({culprit.from, culprit.to});
}

class ReportWriter {
public:
    ReportWriter(const Explanation& explanation, const ExplanationStyle& style)
        : explanation_(explanation), style_(style) {}

    std::string write() {
        const AssessmentOutcome& outcome = explanation_.outcome;
        out_ << verdictText(outcome) << "  " << outcome.name << "\n";
        if (!outcome.description.empty()) {
            out_ << "  " << outcome.description << "\n";
        }
        for (const std::string& text : {outcome.error, outcome.reason}) {
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);) {
                out_ << "  " << line << "\n";
            }
        }
        writeIntervals();
        return std::move(out_).str();
    }

private:
    void writeIntervals() {
        const auto& failures = explanation_.outcome.failures;
        const std::size_t shown = std::min(failures.size(), style_.mostIntervals);
        for (std::size_t i = 0; i < shown; ++i) {
            out_ << "\n" << marked("fails " + intervalText(failures[i])) << "\n";
            for (const Culprit& culprit : explanation_.culprits[i]) {
                out_ << "  because " << culpritText(culprit) << "\n";
            }
            writeCourses(around(failures[i], explanation_.outcome, style_));
        }
        if (failures.empty() && explanation_.outcome.error.empty()) {
            writeCourses({explanation_.outcome.from, explanation_.outcome.to});
        }
        if (shown < failures.size()) {
            const std::size_t more = failures.size() - shown;
            out_ << "\nand in " << more << (more == 1 ? " more interval\n" : " more intervals\n");
        }
    }

    void writeCourses(const Window& window) {
        out_ << "  values from " << timeText(window.from) << " s to " << timeText(window.to)
             << " s:\n";
        TextTable table;
        for (const ExplainedFormula& formula : explanation_.subFormulas) {
            table.addRow({{std::string(2 * formula.depth, ' ') + formula.text},
                          {courseText(formula, window, style_.mostValues)}});
        }
        out_ << table.text("    ", style_.colours);
    }

    std::string marked(const std::string& text) const {
        return style_.colours ? coloured(text, Colour::Red) : text;
    }

    const Explanation& explanation_;
    const ExplanationStyle& style_;
    std::ostringstream out_;
};

}  // namespace

std::string explanationReport(const Explanation& explanation, const ExplanationStyle& style) {
    return ReportWriter(explanation, style).write();
}

}  // namespace vorm::evaluation
