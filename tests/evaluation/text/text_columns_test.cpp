#include "support/choices.hpp"

#include <vorm/evaluation/text/text_columns.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

namespace vorm::evaluation {
namespace {

using vorm::test::anyIndex;
using vorm::test::anyOf;

using Lines = std::vector<std::string>;

// Of characters of one, two and no columns, and of blanks; of bytes that are no UTF-8, too.
std::string anyText() {
    const Lines characters{"a", "b", " ", "é", "漢", "😀", "e\u0301", "…", "\xc3", "\xff"};
    std::string text;
    for (std::size_t i = anyIndex(60); i > 0; --i) {
        text += anyOf(characters);
    }
    return text;
}

std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

TEST(TextColumns, WideCharactersTakeTwoAndMarksNone) {
    EXPECT_EQ(displayWidth("speed"), 5);
    EXPECT_EQ(displayWidth("é…─█"), 4);
    EXPECT_EQ(displayWidth("漢字😀"), 6);
    EXPECT_EQ(displayWidth("e\u0301"), 1);
    EXPECT_EQ(displayWidth("\xff\xc3"), 2);
}

TEST(TextColumns, ElidesTheMiddle) {
    EXPECT_EQ(elided("cruise control", 14), "cruise control");
    EXPECT_EQ(elided("cruise control", 9), "crui…trol");
    EXPECT_EQ(elided("cruise control", 8), "crui…rol");
    EXPECT_EQ(elided("漢字漢字", 6), "漢…字");
    EXPECT_EQ(elided("abc", 1), "…");
}

RC_GTEST_PROP(TextColumns, WhatIsElidedFits, ()) {
    const std::string text = anyText();
    const std::size_t columns = 1 + anyIndex(30);
    const std::string shown = elided(text, columns);
    RC_ASSERT(displayWidth(shown) <= columns);
    RC_ASSERT((shown == text) == (displayWidth(text) <= columns));
    const std::size_t gap = shown.find("…");
    RC_ASSERT(text.starts_with(shown.substr(0, gap)));
}

TEST(TextColumns, WrapsAtBlanks) {
    EXPECT_EQ(wrapped("one two three", 20), (Lines{"one two three"}));
    EXPECT_EQ(wrapped("one two three four", 9), (Lines{"one two", "  three", "  four"}));
    EXPECT_EQ(wrapped("  one two three", 9), (Lines{"  one two", "    three"}));
    EXPECT_EQ(wrapped("abcdefghijklm", 6), (Lines{"abcdef", "  ghij", "  klm"}));
    EXPECT_EQ(wrapped("", 6), (Lines{""}));
    EXPECT_EQ(wrapped(" 漢字", 2), (Lines{" 漢", " 字"})) << "it comes to an end";
}

RC_GTEST_PROP(TextColumns, WrappedLinesFitAndLoseNothingButBlanks, ()) {
    const std::string text = anyText();
    const std::size_t columns = 4 + anyIndex(30);
    std::string joined;
    for (const std::string& line : wrapped(text, columns)) {
        RC_ASSERT(displayWidth(line) <= columns);
        joined += line;
    }
    RC_ASSERT(withoutBlanks(joined) == withoutBlanks(text));
}

}  // namespace
}  // namespace vorm::evaluation
