#include "explanation_report.hpp"

#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// As the timeline counts.
struct Window {
    double from;
    double to;
};

Window around(const TimeSpan& span, const Explanation& explanation, const ExplanationStyle& style) {
    const Timeline& timeline = explanation.timeline;
    const double start = timeline.at(span.start);
    const double end = timeline.at(span.end);
    const AssessmentOutcome& outcome = explanation.outcome;
    const double range = timeline.ticksIn(outcome.to - outcome.from);
    const double margin = style.margin ? timeline.ticksIn(*style.margin)
                                       : std::round(std::max((end - start) / 2, range / 100));
    return {start - margin, end + margin};
}

// What begins or ends just beside a time says so.
std::string momentText(double counted, const Timeline& timeline) {
    const ExactTime time = timeline.timeAt(counted);
    const double at = timeline.at(time);
    return (counted < at ? "just before " : counted > at ? "just after " : "") + time.text();
}

// Texts of the values of one sub-formula.
class ValueText {
public:
    explicit ValueText(const Enumeration* enumeration) : enumeration_(enumeration) {}

    std::string operator()(bool value) const { return value ? "true" : "FALSE"; }
    std::string operator()(const Verdict& value) const { return verdictName(value.get()); }
    std::string operator()(const ValueType<FixedPoint>& value) const { return value.get().text(); }
    std::string operator()(const HalfFloat& value) const {
        return numberText(static_cast<double>(value));
    }
    std::string operator()(double value) const { return numberText(value); }
    std::string operator()(float value) const { return numberText(double{value}); }
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

std::string courseText(const ExplainedFormula& formula, const Window& window, std::size_t most,
                       const Timeline& timeline) {
    if (formula.pieces == nullptr) {
        return "could not be evaluated";
    }
    const ValueText text(formula.enumeration.get());
    std::string course;
    for (const TimedTrace& piece : *formula.pieces) {
        for (const Change& change : changesIn(piece, window, most, text)) {
            course += (course.empty() ? "" : ", ") + change.value + " at " +
                      momentText(change.time, timeline);
        }
    }
    return course.empty() ? "not known here" : course;
}

std::string culpritText(const Culprit& culprit, const Timeline& timeline) {
    const std::string state = culprit.text + " is " + (culprit.value ? "true " : "false ");
    if (culprit.from == culprit.to) {
        const std::string moment = momentText(culprit.from, timeline);
        return state + (moment.starts_with("just") ? "" : "at ") + moment + " s";
    }
    return state + intervalText({timeline.timeAt(culprit.from), timeline.timeAt(culprit.to)});
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
                out_ << "  because " << culpritText(culprit, explanation_.timeline) << "\n";
            }
            writeCourses(around(failures[i], explanation_, style_));
        }
        if (failures.empty() && explanation_.outcome.error.empty()) {
            const Timeline& timeline = explanation_.timeline;
            writeCourses(
                {timeline.at(explanation_.outcome.from), timeline.at(explanation_.outcome.to)});
        }
        if (shown < failures.size()) {
            const std::size_t more = failures.size() - shown;
            out_ << "\nand in " << more << (more == 1 ? " more interval\n" : " more intervals\n");
        }
    }

    void writeCourses(const Window& window) {
        const Timeline& timeline = explanation_.timeline;
        out_ << "  values from " << momentText(window.from, timeline) << " s to "
             << momentText(window.to, timeline) << " s:\n";
        TextTable table;
        for (const ExplainedFormula& formula : explanation_.subFormulas) {
            table.addRow({{std::string(2 * formula.depth, ' ') + formula.text},
                          {courseText(formula, window, style_.mostValues, timeline)}});
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
