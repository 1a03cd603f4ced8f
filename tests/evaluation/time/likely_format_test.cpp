#include <vorm/evaluation/time/likely_format.hpp>

#include <gtest/gtest.h>

#include <vector>

namespace vorm::evaluation::test {
namespace {

// What is proposed reads the text: likelyFormat sees to that. Here it has to read it rightly.
TEST(LikelyFormat, HasAConversionForEachNumber) {
    struct Row {
        const char* text;
        const char* dayFirst;
        const char* monthFirst;
    };
    const std::vector<Row> rows{
        {"01/02/2024 10:00:07.250", "%d/%m/%Y %H:%M:%S", "%m/%d/%Y %H:%M:%S"},
        {"01/02/24 9:39 PM", "%d/%m/%y %I:%M %p", "%m/%d/%y %I:%M %p"},
        {"1.2.24", "%d.%m.%y", "%m.%d.%y"},
        {"2024-02-01T10:00Z", "%Y-%m-%dT%H:%M%z", "%Y-%m-%dT%H:%M%z"},
        {"01-Feb-24 10h", nullptr, nullptr},
        {"01-Feb-24 10:00", "%d-%b-%y %H:%M", "%d-%b-%y %H:%M"},
        {"Feb 1, 2024", "%b %d, %Y", "%b %d, %Y"},
        {"00:20", "%H:%M", "%H:%M"},
        {"13/14/24", nullptr, nullptr},
        {"100% at 10:00", nullptr, nullptr},
        {"yesterday", nullptr, nullptr},
        {"", nullptr, nullptr},
    };
    const auto textOf = [](const std::optional<std::string>& format) {
        return format.value_or("none");
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(textOf(likelyFormat(row.text, ShortDate::DayFirst)),
                  row.dayFirst == nullptr ? "none" : row.dayFirst);
        EXPECT_EQ(textOf(likelyFormat(row.text, ShortDate::MonthFirst)),
                  row.monthFirst == nullptr ? "none" : row.monthFirst);
    }
}

}  // namespace
}  // namespace vorm::evaluation::test
