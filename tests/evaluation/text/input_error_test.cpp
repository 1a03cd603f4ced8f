#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

std::string messageOf(const InputProblem& problem) {
    return InputError(problem).what();
}

TEST(InputError, TellsWhereWhatAndWhatToDo) {
    EXPECT_EQ(messageOf({"unknown signal 'sped'", {"a.toml", 3, 12}, "sped < 20", 0, 4, "no"}),
              "a.toml:3:12: unknown signal 'sped'\n"
              "    sped < 20\n"
              "    ^^^^\n"
              "  no");
    EXPECT_EQ(messageOf({"is empty", {"d.csv", 0, 0}, "", 0, 0, ""}), "d.csv: is empty");
    EXPECT_EQ(messageOf({"cannot write", SourceLocation(), "", 0, 0, "give another path"}),
              "cannot write\n  give another path");
}

TEST(InputError, ShowsThePartOfALongLineThatMatters) {
    const std::string line = std::string(100, 'a') + "\xc3\xa4\x1b" + std::string(100, 'b');
    const std::string message = messageOf({"m", SourceLocation(), line, 100, 500, ""});
    EXPECT_EQ(message, "m\n    ..." + std::string(60, 'a') + "\xc3\xa4?" + std::string(58, 'b') +
                           "...\n    " + std::string(63, ' ') + std::string(60, '^'));
}

// What is no text must not do to a terminal what it likes.
TEST(InputError, ShowsNothingRawOfWhatIsNoText) {
    EXPECT_EQ(messageOf({"m", SourceLocation(), "a\xd0\x9b\xd0z\x7f\xc2\x9b\xff", 0, 0, ""}),
              "m\n    a\xd0\x9b\xef\xbf\xbdz??\xef\xbf\xbd");
    EXPECT_EQ(shown(std::string(39, 'a') + "\xc3\xa4"), "'" + std::string(39, 'a') + "...'");
}

}  // namespace
}  // namespace vorm::evaluation
