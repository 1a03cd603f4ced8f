#include "explanation_report.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

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

// One value of a course, or without a time some that are left out.
struct CourseValue {
    std::string text;
    std::optional<double> time;  // as the timeline counts
};

using Course = std::vector<CourseValue>;

template <class T>
void addCourse(const TimedTrace_T<T>& trace, const Window& window, std::size_t most,
               const ValueText& text, Course& course) {
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
            course.push_back({"...", std::nullopt});
        }
    };
    for (const double time : shownTimes(part, from, to, window, most)) {
        passUpTo(time);
        course.push_back({text(*part.valueAt(time)) + " at ", time});
        point += point != part.points.end() && std::max(from, point->time) == time ? 1 : 0;
    }
    passUpTo(std::numeric_limits<double>::infinity());
}

Course courseOf(const ExplainedFormula& formula, const Window& window, std::size_t most) {
    if (formula.pieces == nullptr) {
        return {{"could not be evaluated", std::nullopt}};
    }
    const ValueText text(formula.enumeration.get());
    Course course;
    const TracePieces& pieces = *formula.pieces;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        pieces[i].visit([&](const auto& trace) { addCourse(trace, window, most, text, course); });
        const double end = support::nextTime(pieces[i].getLastKnownTime());
        const bool goesOn = i + 1 < pieces.size() && pieces[i + 1].getStartTime() <= end;
        if (window.from < end && end <= window.to && !goesOn) {
            course.push_back({"no result from ", end});
        }
    }
    return course.empty() ? Course{{"not known here", std::nullopt}} : course;
}

// `1 at 0, 3 at 2, ..., 2 at 9`
std::string courseText(const Course& course, const Timeline& timeline, const TimeWriter& times) {
    std::string text;
    for (const CourseValue& value : course) {
        text += (text.empty() ? "" : ", ") + value.text;
        if (value.time) {
            text += times.number(timeline.timeAt(*value.time), timeline.besideOf(*value.time));
        }
    }
    return text;
}

class ReportWriter {
public:
    ReportWriter(const Explanation& explanation, const ExplanationStyle& style)
        : explanation_(explanation),
          style_(style),
          width_(usableWidth(style.width)),
          times_(explanation.times) {}

    std::string write() {
        const AssessmentOutcome& outcome = explanation_.outcome;
        writeLines(std::string(styleOf(markOf(outcome, false)).verdict) + "  " + outcome.name, 0);
        writeLines(outcome.description, 2);
        for (const std::string& text :
             {errorText(outcome.error), outcome.reason, neverTriggeredText(outcome)}) {
            writeLines(text, 2);
        }
        for (const std::string& line : openLines(outcome, style_.mostIntervals, times_)) {
            writeLines(line, 2);
        }
        writeIntervals();
        return std::move(out_);
    }

private:
    void writeLines(const std::string& text, std::size_t indent) {
        out_ += indentedLines(text, {std::string(indent, ' '), style_.colours, width_});
    }

    void writeIntervals() {
        const auto& failures = explanation_.outcome.failures;
        const std::size_t shown = std::min(failures.size(), style_.mostIntervals);
        for (std::size_t i = 0; i < shown; ++i) {
            writeFailure(i);
        }
        if (failures.empty() && !explanation_.outcome.error) {
            const Timeline& timeline = explanation_.timeline;
            const Window whole{timeline.at(explanation_.outcome.from),
                               timeline.at(explanation_.outcome.to), std::nullopt};
            const auto courses = coursesIn(whole);
            writeCourses(whole, courses, times_.tellingApart(timesOf(whole, courses)));
        }
        if (shown < failures.size()) {
            out_ += "\n";
            writeLines(moreIntervalsText(failures.size() - shown), 0);
        }
    }

    void writeFailure(std::size_t number) {
        const TimeSpan& failure = explanation_.outcome.failures[number];
        const FailureExplanation& causes = explanation_.outcome.explanations[number];
        const Window window = around(number, explanation_, style_);
        const std::vector<Course> courses = coursesIn(window);
        std::vector<ExactTime> named = timesOf(window, courses);
        named.insert(named.end(), {failure.start, failure.end});
        for (const Cause& cause : causes.causes) {
            named.insert(named.end(), {cause.span.start, cause.span.end});
        }
        const TimeWriter times = times_.tellingApart(std::move(named));
        const std::string head = "fails " + times.interval(failure);
        out_ += "\n" + (style_.colours ? coloured(head, Colour::Red) : head) + "\n";
        for (const std::string& line : causeLines(causes, style_.mostValues, times)) {
            writeLines(line, 2);
        }
        writeCourses(window, courses, times);
    }

    std::vector<Course> coursesIn(const Window& window) const {
        std::vector<Course> courses;
        for (const ExplainedFormula& formula : explanation_.subFormulas) {
            courses.push_back(courseOf(formula, window, style_.mostValues));
        }
        return courses;
    }

    std::vector<ExactTime> timesOf(const Window& window, const std::vector<Course>& courses) const {
        const Timeline& timeline = explanation_.timeline;
        std::vector<ExactTime> times{timeline.timeAt(window.from), timeline.timeAt(window.to)};
        for (const Course& course : courses) {
            for (const CourseValue& value : course) {
                if (value.time) {
                    times.push_back(timeline.timeAt(*value.time));
                }
            }
        }
        return times;
    }

    void writeCourses(const Window& window, const std::vector<Course>& courses,
                      const TimeWriter& times) {
        const Timeline& timeline = explanation_.timeline;
        writeLines("values from " + times.number(timeline.timeAt(window.from)) + " s to " +
                       times.number(timeline.timeAt(window.to)) + " s:",
                   2);
        TextTable table;
        std::string list;
        for (std::size_t i = 0; i < courses.size(); ++i) {
            const ExplainedFormula& formula = explanation_.subFormulas[i];
            const std::string text = courseText(courses[i], timeline, times);
            const std::string indent(2 * formula.depth, ' ');
            table.addRow({{indent + formula.text}, {text}});
            list += indentedLines(formula.text, {"    " + indent, false, width_}) +
                    indentedLines(text, {"        " + indent, false, width_});
        }
        // Side by side where the lines are not too long for that.
        const bool fits = !width_ || table.columns() + 4 <= *width_;
        out_ += fits ? table.text({"    ", style_.colours, std::nullopt}) : list;
    }

    const Explanation& explanation_;
    const ExplanationStyle& style_;
    const std::optional<std::size_t> width_;
    const TimeWriter times_;
    std::string out_;
};

}  // namespace

std::string explanationReport(const Explanation& explanation, const ExplanationStyle& style) {
    return ReportWriter(explanation, style).write();
}

}  // namespace vorm::evaluation
