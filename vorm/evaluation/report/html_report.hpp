#pragma once

#include <vorm/evaluation/drawing/recording_drawing.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vorm::evaluation {

struct HtmlStyle {
    std::string program;  ///< that made the report, with its version; or empty
    std::string date;     ///< or empty
    /// What the page takes at most: where it would be more, signals are thinned further, also near
    /// failures, and at last the plots of the recordings that take most are left out, which the
    /// page says. What the tables say is never left out.
    std::size_t mostBytes = 20'000'000;
    std::size_t mostIntervals = 100;  ///< of each assessment in the tables; the others are counted
};

/// The outcome as one page that needs no other file and asks for none: a matrix of recordings and
/// assessments, and for each assessment its formula, intervals, causes and plots. `drawings` are
/// those of drawRecording, in any order; what has none has no plots. The same arguments give the
/// same bytes. Linear in the samples drawn and the intervals.
std::string htmlReport(const AssessmentFile& file, const RunOutcome& run,
                       const std::vector<RecordingDrawing>& drawings, const HtmlStyle& style = {});

}  // namespace vorm::evaluation
