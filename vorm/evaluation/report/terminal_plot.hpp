#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vorm::evaluation {

struct TerminalPlotStyle {
    std::size_t width = 80;           ///< characters of a line, at least 40
    std::size_t height = 5;           ///< lines of a signal of numbers
    std::optional<ExactTime> margin;  ///< shown before and after; nothing: as long as the interval
    bool colours = false;
};

/// The signals that are to blame for the first failing interval, around it, in block characters:
/// each column spans the least and the greatest value of its time, so that no peak is lost. Empty
/// where nothing fails or is explained, and for an interval without causes.
std::string terminalPlot(const AssessmentOutcome& outcome, const Recording& recording,
                         const TerminalPlotStyle& style = {});

}  // namespace vorm::evaluation
