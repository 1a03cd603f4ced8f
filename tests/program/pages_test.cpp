// What is written of options that are none of the program's own, and what holds for those that are.

#include "pages/pages.hpp"

#include "support/text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <stdexcept>

namespace assess_tests {
namespace {

using namespace assess;
using vorm::test::has;

const std::vector<OptionEntry> strangers{
    {.names = "-x,--odd-one",
     .commands = {Command::Run, Command::Show},
     .value = "on|FILE",
     .suggestions = {"on"},
     .occurrence = Occurrence::Repeatable,
     .help = "JSON's [list], a\\b; more",
     .more = ".x stands first.",
     .store = &Options::only},
    {.names = "--all",
     .value = "PATH",
     .isPath = true,
     .occurrence = Occurrence::Several,
     .group = OptionGroup::Layout,
     .help = "'quoted' first",
     .store = &Options::recordings},
    {.names = "PLACE", .value = "TEXT", .help = "Unnamed", .store = &Options::name},
};

TEST(Pages, TheManualEscapesWhatFormattersRead) {
    EXPECT_EQ(manualPage(".TH @VERSION@\n@OPTIONS@\n.SS\n@LAYOUT_OPTIONS@\n.SH\n", strangers),
              ".TH " VORM_VERSION
              "\n"
              ".TP\n"
              "\\fB\\-x\\fR, \\fB\\-\\-odd\\-one\\fR on|\\fIFILE\\fR\n"
              "\\fBrun\\fR, \\fBshow\\fR: JSON's [list], a\\eb; more.\n"
              "Can be repeated.\n"
              "\\&.x stands first.\n"
              ".SS\n"
              ".TP\n"
              "\\fB\\-\\-all\\fR \\fIPATH\\fR ...\n"
              "\\&'quoted' first.\n"
              ".SH\n");
}

TEST(Pages, TheManualNeedsAllMarks) {
    for (const std::string frame : {"@OPTIONS@\n@LAYOUT_OPTIONS@\n", "@VERSION@ @OPTIONS@\n",
                                    "@VERSION@ @LAYOUT_OPTIONS@\n"}) {
        EXPECT_THROW(manualPage(frame, strangers), std::invalid_argument) << frame;
    }
}

TEST(Pages, ZshGetsQuotesAndBracketsEscaped) {
    const std::string zsh = zshCompletion(strangers);
    EXPECT_TRUE(has(zsh, R"( '*'{-x,--odd-one}'[JSON'\''s [list\], a\\b]:odd one:(on)' \)")) << zsh;
    EXPECT_TRUE(has(zsh, R"( '*--all['\''quoted'\'' first]:all:_files')")) << zsh;
    EXPECT_FALSE(has(zsh, "PLACE"));
}

// A flag without a place for a truth, or a value without a word, would be one thing to the parser
// and another one to the completions.
TEST(Pages, TheTableHasWhatPagesAndShellsTakeAsItIs) {
    const std::regex names("(-[a-z],)?--[a-z]+(-[a-z]+)*|[A-Z]+");
    const std::regex word("[a-z0-9-]+=?");
    for (const OptionEntry& entry : optionTable()) {
        EXPECT_TRUE(std::regex_match(entry.names, names)) << entry.names;
        EXPECT_TRUE(std::regex_match(entry.help, std::regex("[A-Z].*[^.]"))) << entry.help;
        EXPECT_TRUE(entry.more.empty() || entry.more.ends_with('.')) << entry.more;
        EXPECT_TRUE(entry.choices.empty() || entry.value.empty()) << entry.names;
        for (const std::string& offered : offeredWords(entry)) {
            EXPECT_TRUE(std::regex_match(offered, word)) << entry.names << " " << offered;
        }
        const bool isFlag = std::holds_alternative<bool Options::*>(entry.store) ||
                            std::holds_alternative<Answer>(entry.store);
        EXPECT_EQ(valueText(entry).empty(), isFlag) << entry.names;
    }
}

}  // namespace
}  // namespace assess_tests
