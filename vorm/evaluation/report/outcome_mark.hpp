#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/text_table.hpp>

#include <array>

namespace vorm::evaluation {

/// How an assessment ended, as reports for terminals show it.
struct OutcomeMark {
    char sign;
    const char* meaning;
    Colour colour;
};

/// From the worst to the best.
inline constexpr std::array<OutcomeMark, 5> outcomeMarks{
    {{'E', "could not be assessed", Colour::Magenta},
     {'F', "failed", Colour::Red},
     {'?', "without result", Colour::Yellow},
     {'o', "passed, but open at some time", Colour::Yellow},
     {'.', "passed", Colour::Green}}};

/// Its position in outcomeMarks.
std::size_t markOf(const AssessmentOutcome& outcome, bool strict);

}  // namespace vorm::evaluation
