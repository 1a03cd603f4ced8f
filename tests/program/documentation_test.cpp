// What the manual, the completion and the documents tell of the program is what it offers.

#include "program_runner.hpp"

#include <algorithm>
#include <regex>
#include <vector>

namespace assess_tests {
namespace {

using Documentation = ProgramTest;

// What the group of the pattern is, wherever the text has it.
std::vector<std::string> allOf(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    return {std::sregex_token_iterator(text.begin(), text.end(), regex, 1), {}};
}

std::vector<std::string> commandsIn(const std::string& help) {
    return allOf(help.substr(help.find("Subcommands:")), "\n  ([a-z]+)");
}

TEST_F(Documentation, EveryCommandAndFormatIsInTheManualAndTheCompletion) {
    std::vector<std::string> words = commandsIn(assess("--help").out);
    EXPECT_GE(words.size(), 4U);
    for (const std::string& command : std::vector<std::string>(words)) {
        for (const std::string& list :
             allOf(assess(command + " --help").out, "--format ([a-z]+(\\|[a-z]+)+)")) {
            const std::vector<std::string> formats = allOf(list, "([a-z]+)");
            words.insert(words.end(), formats.begin(), formats.end());
        }
    }
    EXPECT_EQ(std::count(words.begin(), words.end(), "junit"), 1);
    for (const char* path : {"/assess.1", "/assess.bash", "/_assess"}) {
        const std::string text = contentOf(std::string(VORM_ASSESS_PAGES) + path);
        for (const std::string& word : words) {
            EXPECT_TRUE(std::regex_search(text, std::regex("\\b" + word + "\\b")))
                << path << ": " << word;
        }
    }
}

constexpr const char* optionPattern = "(--[a-z][a-z-]*)";

// Not only a longer option that begins with it.
bool names(const std::string& text, const std::string& option) {
    const std::vector<std::string> options = allOf(text, optionPattern);
    return std::find(options.begin(), options.end(), option) != options.end();
}

TEST_F(Documentation, EveryOptionIsInTheManualAndTheCompletion) {
    const std::string manual =
        std::regex_replace(contentOf(VORM_ASSESS_PAGES "/assess.1"), std::regex(R"(\\-)"), "-");
    const std::string bash = contentOf(VORM_ASSESS_PAGES "/assess.bash");
    const std::string zsh = contentOf(VORM_ASSESS_PAGES "/_assess");
    std::vector<std::string> commands = commandsIn(assess("--help").out);
    commands.emplace_back();
    for (const std::string& command : commands) {
        for (const std::string& option : allOf(assess(command + " --help").out, optionPattern)) {
            EXPECT_TRUE(names(manual, option)) << option;
            EXPECT_TRUE(names(bash, option)) << option;
            EXPECT_TRUE(names(zsh, option)) << option;
        }
    }
}

TEST_F(Documentation, EveryKeyOfRecordingIsAnOptionOfSignals) {
    const std::string help = assess("signals --help").out;
    const std::string group = help.substr(help.find("How the recordings are read"));
    std::vector<std::string> options =
        allOf(group.substr(0, group.find("\n\n")), "\n +--([a-z-]+)");
    const std::string page = contentOf(VORM_DOCS "/assessment_files.md");
    const std::string section = page.substr(page.find("## [recording]"));
    std::vector<std::string> keys;
    for (const std::string& row :
         allOf(section.substr(0, section.find("###")), R"(\n\| (`[^|]+) \|)")) {
        for (const std::string& key : allOf(row, "`([a-z_]+)`")) {
            keys.push_back(std::regex_replace(key, std::regex("_"), "-"));
        }
    }
    std::sort(options.begin(), options.end());
    std::sort(keys.begin(), keys.end());
    EXPECT_GE(keys.size(), 12U);
    EXPECT_EQ(options, keys);
}

// The indented blocks of a page, without their indentation.
std::vector<std::string> blocksIn(const std::string& page) {
    std::vector<std::string> blocks;
    for (const std::string& block :
         allOf(contentOf(std::string(VORM_DOCS) + page), "\n\n((    [^\n]*\n)+)")) {
        blocks.push_back(std::regex_replace("\n" + block, std::regex("\n    "), "\n"));
    }
    return blocks;
}

bool isCommand(const std::string& block) {
    return std::regex_search(block, std::regex("^\n[^#\\[]*\\bassess run "));
}

// Those that are no commands, up to an example of output.
std::string assessmentFileIn(const std::string& page) {
    std::string file;
    for (const std::string& block : blocksIn(page)) {
        file += std::regex_search(block, std::regex("^\n(#|\\[)")) ? block : "";
    }
    return file;
}

TEST_F(Documentation, FilesAndCommandsOfTheReferenceAreUsable) {
    write("limits.toml", assessmentFileIn("/assessment_files.md"));
    write("brakes.toml", assessmentFileIn("/reports.md"));
    const std::string table = "time,Speed,speed,brake\n0,20,20,0\n1,21,21,40\n";
    write("drive.csv", table);
    ASSERT_EQ(shell("mkdir drives flights recordings").exitCode, 0);
    for (const char* name : {"drives/a.csv", "drives/b.csv", "flights/a.csv", "recordings/a.csv"}) {
        write(name, table);
    }
    EXPECT_EQ(assess("run brakes.toml drives/*.csv -f json -o yesterday.json").exitCode, 0);
    const std::string path = "PATH=$(dirname " VORM_ASSESS "):$PATH; ";
    int commands = 0;
    for (const char* page :
         {"/assessment_files.md", "/reports.md", "/site/continuous_integration.md"}) {
        for (const std::string& block : blocksIn(page)) {
            if (isCommand(block)) {
                ++commands;
                const ProgramResult result = shell(path + block.substr(0, block.size() - 1));
                EXPECT_LE(result.exitCode, 1) << block << result.err;
            }
        }
    }
    EXPECT_EQ(commands, 4);
}

}  // namespace
}  // namespace assess_tests
