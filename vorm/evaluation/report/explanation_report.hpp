#pragma once

#include <vorm/evaluation/assessment/explanation.hpp>

#include <cstddef>
#include <string>

namespace vorm::evaluation {

struct ExplanationStyle {
    bool colours = false;
    std::size_t mostIntervals = 3;  ///< failing intervals that are shown
    std::size_t mostValues = 8;     ///< values of each sub-formula that are shown around each
    /// The columns of the terminal, of which at least 60 are used: longer lines go on below, and
    /// values stand below their formula. Nothing: lines of any length.
    std::optional<std::size_t> width;
    std::optional<ExactTime> margin;  ///< shown before and after; nothing: what fits
};

/// For each failing interval what decides its beginning, and the course of every sub-formula around
/// it; without failures the course over the whole range.
std::string explanationReport(const Explanation& explanation, const ExplanationStyle& style = {});

}  // namespace vorm::evaluation
