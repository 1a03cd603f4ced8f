#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/drawing/recording_drawing.hpp>

#include <cstddef>
#include <string>

namespace vorm::evaluation {

struct SvgStyle {
    std::size_t width = 900;  ///< pixels
};

/// The plots of one assessment on a recording as a picture for a document: the verdict over time,
/// and below it its signals on the same axis, with what the HTML report draws of them. No more than
/// the first, last, least and greatest sample of a pixel is drawn. Empty where the assessment is
/// not drawn.
std::string svgReport(const RecordingOutcome& outcome, std::size_t assessment,
                      const RecordingDrawing& drawing, const SvgStyle& style = {});

}  // namespace vorm::evaluation
