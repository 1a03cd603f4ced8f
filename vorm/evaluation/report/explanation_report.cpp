#include "explanation_report.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <sstream>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// As the timeline counts.
struct Window {
    double from;
    double to;
    std::optional<double> failure;  // its first time
};

// The failing interval with all its causes.
Window around(std::size_t failure, const Explanation& explanation, const ExplanationStyle& style) {
    const Timeline& timeline = explanation.timeline;
    const AssessmentOutcome& outcome = explanation.outcome;
    const TimeSpan& span = outcome.failures[failure];
    const TimeSpan shown = outcome.failureWithCauses(failure);
    const double length = timeline.ticksIn(span.length());
    const double range = timeline.ticksIn(outcome.to - outcome.from);
    const double margin = style.margin ? timeline.ticksIn(*style.margin)
                                       : std::round(std::max(length / 2, range / 100));
    return {timeline.at(shown.start) - margin, timeline.at(shown.end) + margin,
            timeline.at(span.start)};
}

// Texts of the values of one sub-formula.
class ValueText {
public:
    explicit ValueText(const Enumeration* enumeration) : enumeration_(enumeration) {}

    std::string operator()(bool value) const { return value ? "true" : "FALSE"; }
    std::string operator()(const Verdict& value) const {
        return std::string(verdictName(value.get()));
    }
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

// The times whose values are shown: the changes, thinned where there are too many, and the first
// failing one where it does not stand among them.
template <class T>
std::vector<double> shownTimes(const TimedTrace_T<T>& part, double from, double to,
                               const Window& window, std::size_t most) {
    const bool isThinned = part.points.size() > most && from < to;
    auto thinned = part;
    if (isThinned) {
        // Each bucket keeps its least and its greatest value.
        thinned.decimate(2 * (to - from) / static_cast<double>(most));
    }
    std::vector<double> times;
    for (const auto& point : thinned.points) {
        times.push_back(std::max(from, point.time));
    }
    const bool isLine = part.interpolation == INTERPOLATION_METHOD::LINEAR;
    const auto& failure = window.failure;
    if (failure && from <= *failure && *failure <= to && (isLine || isThinned)) {
        times.push_back(*failure);
    }
    if (isLine) {
        times.push_back(to);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

// `1 at 0, 3 at 2, ..., 2 at 9`: dots for what is left out.
template <class T>
void addCourse(const TimedTrace_T<T>& trace, const Window& window, std::size_t most,
               const ValueText& text, const Timeline& timeline, std::vector<std::string>& course) {
    const double from = std::max(window.from, trace.points.front().time);
    const double to = std::min(window.to, trace.lastKnownTime);
    if (!(from <= to)) {
        return;
    }
    const auto part = trace.extractWindow(from, to, 0);
    auto point = part.points.begin();
    const auto passUpTo = [&](double time) {
        bool leavesOut = false;
        for (; point != part.points.end() && point->time < time; ++point) {
            leavesOut = true;
        }
        if (leavesOut) {
            course.emplace_back("...");
        }
    };
    for (const double time : shownTimes(part, from, to, window, most)) {
        passUpTo(time);
        course.push_back(text(*part.valueAt(time)) + " at " + timeline.textOf(time));
        point += point != part.points.end() && std::max(from, point->time) == time ? 1 : 0;
    }
    passUpTo(std::numeric_limits<double>::infinity());
}

std::string courseText(const ExplainedFormula& formula, const Window& window, std::size_t most,
                       const Timeline& timeline) {
    if (formula.pieces == nullptr) {
        return "could not be evaluated";
    }
    const ValueText text(formula.enumeration.get());
    std::vector<std::string> course;
    const TracePieces& pieces = *formula.pieces;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        pieces[i].visit(
            [&](const auto& trace) { addCourse(trace, window, most, text, timeline, course); });
        const double end = support::nextTime(pieces[i].getLastKnownTime());
        const bool goesOn = i + 1 < pieces.size() && pieces[i + 1].getStartTime() <= end;
        if (window.from < end && end <= window.to && !goesOn) {
            course.push_back("no result from " + timeline.textOf(end));
        }
    }
    std::string joined;
    for (const std::string& value : course) {
        joined += (joined.empty() ? "" : ", ") + value;
    }
    return joined.empty() ? "not known here" : joined;
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
        for (const std::string& text :
             {errorText(outcome.error), outcome.reason, neverTriggeredText(outcome)}) {
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);) {
                out_ << "  " << line << "\n";
            }
        }
        for (const std::string& line : openLines(outcome, style_.mostIntervals)) {
            out_ << "  " << line << "\n";
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
            for (const std::string& line :
                 causeLines(explanation_.outcome.explanations[i], style_.mostValues)) {
                out_ << "  " << line << "\n";
            }
            writeCourses(around(i, explanation_, style_));
        }
        if (failures.empty() && !explanation_.outcome.error) {
            const Timeline& timeline = explanation_.timeline;
            writeCourses({timeline.at(explanation_.outcome.from),
                          timeline.at(explanation_.outcome.to), std::nullopt});
        }
        if (shown < failures.size()) {
            out_ << "\n" << moreIntervalsText(failures.size() - shown) << "\n";
        }
    }

    void writeCourses(const Window& window) {
        const Timeline& timeline = explanation_.timeline;
        out_ << "  values from " << timeline.textOf(window.from) << " s to "
             << timeline.textOf(window.to) << " s:\n";
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
