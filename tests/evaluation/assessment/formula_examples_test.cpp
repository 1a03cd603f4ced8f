// The examples of the page on formulas are what the program says.

#include <vorm/evaluation/assessment/run.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

std::string page() {
    std::ifstream file(VORM_DOCS "/formulas.md");
    std::stringstream text;
    text << file.rdbuf();
    return text.str().substr(text.str().find("## Examples"));
}

struct Example {
    std::string formula;
    std::string failures;
    std::string open;
};

std::vector<Example> examplesOf(const std::string& text) {
    const std::regex row(R"(\n\| `([^`]+)` \|([^|]*)\|([^|]*)\|)");
    std::vector<Example> examples;
    for (std::sregex_iterator match(text.begin(), text.end(), row), end; match != end; ++match) {
        examples.push_back({(*match)[1], (*match)[2], (*match)[3]});
    }
    return examples;
}

std::string recordedIn(const std::string& text) {
    const std::regex line(R"(\n    ([^\n]+))");
    std::string recording;
    for (std::sregex_iterator match(text.begin(), text.end(), line), end; match != end; ++match) {
        recording += (*match)[1].str() + '\n';
    }
    return recording;
}

// As the page has it.
std::string shown(const std::vector<TimeSpan>& spans) {
    std::string text = " ";
    for (const TimeSpan& span : spans) {
        text += '[' + span.start.text() + ", " + span.end.text() + "] ";
    }
    return text;
}

TEST(FormulaExamples, AreWhatIsSaidOfThem) {
    const std::string text = page();
    const std::vector<Example> examples = examplesOf(text);
    ASSERT_GE(examples.size(), 30U);
    std::string file =
        "[signals]\nx = { interpolation = \"linear\" }\ny = { interpolation = \"held\" }\n"
        "p = { type = \"bool\" }\nq = { type = \"bool\" }\n";
    for (const Example& example : examples) {
        file += "[[assessment]]\nname = \"" + example.formula + "\"\nformula = \"" +
                example.formula + "\"\n";
    }
    const std::string path = testing::TempDir() + "/formula_examples.csv";
    std::ofstream(path) << recordedIn(text);
    const RunOutcome outcome = run(parseAssessmentFile(file, "examples.toml"), {{{path}}});
    const RecordingOutcome& recording = outcome.recordings.at(0);
    ASSERT_FALSE(recording.error) << recording.error->what();
    for (std::size_t i = 0; i < examples.size(); ++i) {
        const AssessmentOutcome& assessment = recording.assessments.at(i);
        EXPECT_FALSE(assessment.error) << (assessment.error ? assessment.error->what() : "");
        EXPECT_EQ(shown(assessment.failures), examples[i].failures) << examples[i].formula;
        EXPECT_EQ(shown(assessment.openSpans), examples[i].open) << examples[i].formula;
    }
}

}  // namespace
}  // namespace vorm::evaluation
