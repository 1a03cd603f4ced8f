#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/text_table.hpp>

#include <array>
#include <cstddef>
#include <vector>

namespace vorm::evaluation {

/// How an assessment ended, from the worst to the best.
enum class Mark { Error, Failed, Warned, NoResult, Open, Informed, Passed };

inline constexpr std::size_t markCount = 7;

Mark markOf(const AssessmentOutcome& outcome, bool strict);

/// How often each mark is there, by mark.
using MarkCounts = std::array<std::size_t, markCount>;

constexpr std::size_t& of(Mark mark, MarkCounts& counts) {
    return counts[static_cast<std::size_t>(mark)];
}

constexpr std::size_t of(Mark mark, const MarkCounts& counts) {
    return counts[static_cast<std::size_t>(mark)];
}

MarkCounts countMarks(const std::vector<Mark>& marks);

/// How reports for terminals show it.
struct MarkStyle {
    char sign;
    const char* verdict;
    const char* meaning;
    Colour colour;
};

/// In the order of the marks.
inline constexpr std::array<MarkStyle, markCount> markStyles{
    {{'E', "ERROR", "could not be assessed", Colour::Magenta},
     {'F', "FAIL", "failed", Colour::Red},
     {'W', "WARNING", "failed as a warning", Colour::Yellow},
     {'?', "NO_RESULT", "without result", Colour::Yellow},
     {'o', "OPEN", "passed, but open at some time", Colour::Yellow},
     {'i', "INFO", "failed as an info", Colour::Cyan},
     {'.', "PASS", "passed", Colour::Green}}};

constexpr const MarkStyle& styleOf(Mark mark) {
    return markStyles[static_cast<std::size_t>(mark)];
}

}  // namespace vorm::evaluation
