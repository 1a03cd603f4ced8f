#include "junit_report.hpp"

#include <vorm/assessments/platform/utf.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <vector>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;

// XML has no way to write most control characters, two others, and anything that is no UTF-8.
std::string xmlText(const std::string& text) {
    std::u16string characters = platform::toUtf16(text);
    std::replace_if(
        characters.begin(), characters.end(),
        [](char16_t c) { return (c < 0x20 && c != u'\n' && c != u'\t') || c >= 0xfffe; },
        u'\xfffd');
    return platform::toUtf8(characters);
}

// Where memory is out the library gives null nodes and goes on without what was to be added.
void require(bool isAdded) {
    if (!isAdded) {
        throw std::bad_alloc();
    }
}

pugi::xml_node add(pugi::xml_node parent, const char* name) {
    const pugi::xml_node node = parent.append_child(name);
    require(node);
    return node;
}

void set(pugi::xml_node node, const char* name, const std::string& value) {
    require(node.append_attribute(name).set_value(xmlText(value).c_str()));
}

void set(pugi::xml_node node, const char* name, std::size_t value) {
    require(node.append_attribute(name).set_value(static_cast<unsigned long long>(value)));
}

void setText(pugi::xml_node node, const std::string& text) {
    require(node.text().set(xmlText(text).c_str()));
}

void addProblem(pugi::xml_node testCase, const char* kind, const std::string& message,
                const std::string& details) {
    pugi::xml_node problem = add(testCase, kind);
    set(problem, "message", message);
    if (!details.empty()) {
        setText(problem, details);
    }
}

void addError(pugi::xml_node testCase, const InputError& error) {
    const std::string text = error.what();
    addProblem(testCase, "error", text.substr(0, text.find('\n')), text);
}

constexpr std::size_t allIntervals = std::numeric_limits<std::size_t>::max();

std::string detailsOf(const AssessmentOutcome& outcome, const std::vector<std::string>& lines) {
    std::string details = outcome.formula + "\n";
    for (const std::string& line : lines) {
        details += line + "\n";
    }
    return details;
}

// What is to be known of a verdict, whichever it is.
std::string notesOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    std::string notes = neverTriggeredText(outcome);
    notes += notes.empty() ? "" : "\n";
    if (outcome.verdict == resultEnum_t::FAIL && outcome.severity != Severity::Error) {
        notes += "fails, and is of the severity " + std::string(nameOf(outcome.severity)) + ":\n" +
                 detailsOf(outcome, failureLines(outcome, allIntervals, times));
    }
    for (const std::string& line : openLines(outcome, allIntervals, times)) {
        notes += line + "\n";
    }
    return notes;
}

// What fails only because the run is strict.
void addStrictFailure(pugi::xml_node testCase, const AssessmentOutcome& outcome,
                      const TimeWriter& times) {
    if (outcome.verdict == resultEnum_t::NO_RESULT) {
        addProblem(testCase, "failure", "no result, and --strict is on: " + outcome.reason,
                   detailsOf(outcome, {}));
        return;
    }
    addProblem(testCase, "failure",
               "no result " + times.interval(outcome.openSpans.front()) + ", and --strict is on",
               detailsOf(outcome, openLines(outcome, allIntervals, times)));
}

// What is not plain, so that other programs can choose by it.
void addProperties(pugi::xml_node testCase, const AssessmentOutcome& outcome) {
    if (outcome.severity == Severity::Error && outcome.tags.empty()) {
        return;
    }
    pugi::xml_node properties = add(testCase, "properties");
    const auto addProperty = [&](const char* name, const std::string& value) {
        pugi::xml_node property = add(properties, "property");
        set(property, "name", std::string(name));
        set(property, "value", value);
    };
    addProperty("severity", std::string(nameOf(outcome.severity)));
    for (const std::string& tag : outcome.tags) {
        addProperty("tag", tag);
    }
}

void addAssessment(pugi::xml_node suite, const std::string& file, bool strict,
                   const AssessmentOutcome& outcome, const TimeWriter& times,
                   const std::string& change) {
    pugi::xml_node testCase = add(suite, "testcase");
    set(testCase, "classname", file);
    set(testCase, "name", outcome.name);
    addProperties(testCase, outcome);
    if (outcome.error) {
        addError(testCase, *outcome.error);
    } else if (outcome.failsRun(false)) {
        addProblem(testCase, "failure", "fails " + times.interval(outcome.failures.front()),
                   detailsOf(outcome, failureLines(outcome, allIntervals, times)));
    } else if (outcome.failsRun(strict)) {
        addStrictFailure(testCase, outcome, times);
    } else if (outcome.verdict == resultEnum_t::NO_RESULT) {
        addProblem(testCase, "skipped", outcome.reason, "");
    }
    const std::string notes = change + notesOf(outcome, times);
    if (!notes.empty()) {
        setText(add(testCase, "system-out"), notes);
    }
}

// A stream would end the text where memory is out, and say nothing.
struct TextWriter final : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

// Of all test cases below the node, which are complete.
void setCounts(pugi::xml_node node) {
    std::size_t tests = 0;
    std::array<std::size_t, 3> counts{};
    constexpr std::array kinds{"failure", "error", "skipped"};
    for (const auto& found : node.select_nodes(".//testcase")) {
        ++tests;
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            counts[i] += found.node().child(kinds[i]) ? 1 : 0;
        }
    }
    set(node, "tests", tests);
    set(node, "failures", counts[0]);
    set(node, "errors", counts[1]);
    set(node, "skipped", counts[2]);
}

// The schema has properties in a suite only.
void addParameters(pugi::xml_node suite, const FormulaParameters& parameters) {
    if (parameters.empty()) {
        return;
    }
    pugi::xml_node properties = add(suite, "properties");
    for (const FormulaParameter& parameter : parameters) {
        pugi::xml_node property = add(properties, "property");
        set(property, "name", parameter.name);
        set(property, "value", parameter.value);
    }
}

// What is otherwise with an assessment than it was.
std::string changeText(const BaselineComparison* comparison, const std::string& recording,
                       const std::string& assessment) {
    std::string text;
    if (comparison != nullptr) {
        for (const BaselineChange& change : comparison->changes) {
            if (change.recording == recording && change.assessment == assessment) {
                text += nameOf(change.kind) + (" compared with " + comparison->baseline) + ": " +
                        change.what + "\n";
            }
        }
    }
    return text;
}

void addRecording(pugi::xml_node suites, const RunOutcome& run,
                  const BaselineComparison* comparison, const RecordingOutcome& recording) {
    pugi::xml_node suite = add(suites, "testsuite");
    set(suite, "name", recording.recording);
    addParameters(suite, run.parameters);
    if (recording.error) {
        pugi::xml_node testCase = add(suite, "testcase");
        set(testCase, "classname", run.file);
        set(testCase, "name", "reading the recording");
        addError(testCase, *recording.error);
    }
    const TimeWriter times(recording.times.clock);
    for (const AssessmentOutcome& outcome : recording.assessments) {
        addAssessment(suite, run.file, run.strict, outcome, times,
                      changeText(comparison, recording.recording, outcome.name));
    }
    setCounts(suite);
}

}  // namespace

std::string junitReport(const RunOutcome& run, const BaselineComparison* comparison) {
    pugi::xml_document document;
    pugi::xml_node suites = add(document, "testsuites");
    set(suites, "name", run.title.empty() ? run.file : run.title);
    for (const RecordingOutcome& recording : run.recordings) {
        addRecording(suites, run, comparison, recording);
    }
    setCounts(suites);
    TextWriter writer;
    document.save(writer, "  ", pugi::format_default, pugi::encoding_utf8);
    return std::move(writer.text);
}

}  // namespace vorm::evaluation
