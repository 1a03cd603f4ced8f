// What bash offers, asked as it asks when a user presses the tab key.

#include "program_runner.hpp"

#include <algorithm>
#include <regex>
#include <sstream>
#include <vector>

namespace assess_tests {
namespace {

using Words = std::vector<std::string>;

class Completion : public ProgramTest {
protected:
    // For the last one of the words of a line, which may be empty: `run --unit ''`.
    Words offered(const std::string& line) const {
        const std::string script = ". " VORM_ASSESS_PAGES
                                   "/assess.bash\n"
                                   "COMP_WORDS=(assess " +
                                   line +
                                   ")\n"
                                   "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                                   "_assess\n"
                                   "for each in \"${COMPREPLY[@]}\"; do echo \"$each\"; done\n";
        write(".ask", script);
        const ProgramResult result = shell("bash -u .ask");
        EXPECT_EQ(result.err, "") << line;
        std::istringstream lines(result.out);
        Words words;
        for (std::string word; std::getline(lines, word);) {
            words.push_back(word);
        }
        std::sort(words.begin(), words.end());
        return words;
    }

    // The options that help lists.
    Words optionsOf(const std::string& command) const {
        const std::string help = assess(command + " --help").out;
        const std::regex option("\n +(?:-[a-z],)?(--[a-z-]+)");
        return {std::sregex_token_iterator(help.begin(), help.end(), option, 1), {}};
    }
};

TEST_F(Completion, EachSubCommandHasItsOptionsAndThoseOfTheProgram) {
    const Words own = optionsOf("");
    for (const std::string command : {"run", "check", "signals", "init", "show"}) {
        Words expected = optionsOf(command);
        expected.insert(expected.end(), own.begin(), own.end());
        std::sort(expected.begin(), expected.end());
        expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
        EXPECT_EQ(offered(command + " a.toml --"), expected) << command;
    }
}

TEST_F(Completion, ValuesAreChoicesFilesOrNothing) {
    write("a drive.csv", "");
    for (const auto& [line, expected] : std::vector<std::pair<std::string, Words>>{
             {"''", {"check", "init", "run", "show", "signals"}},
             {"s", {"show", "signals"}},
             {"--color ''", {"always", "auto", "never"}},
             {"run --color a", {"always", "auto"}},
             {"run -f h", {"html", "html="}},
             {"signals --format ''", {"json", "table"}},
             {"show --format s", {"svg"}},
             {"check --format a", {"a drive.csv"}},  // has none
             {"-q run 'a d'", {"a drive.csv"}},
             {"run a.toml --output a", {"a drive.csv"}},
             {"signals --layout a", {"a drive.csv"}},
             {"run --only a", {}},
             {"signals --time a", {}},
             {"init --resolution m", {"ms"}},
             {"init --delimiter ''", {"comma", "semicolon", "tab"}},
             {"signals --origin ''", {"first", "recorded"}},
             {"show --plot", {}},
         }) {
        EXPECT_EQ(offered(line), expected) << line;
    }
}

}  // namespace
}  // namespace assess_tests
