#pragma once

// The data that the script of the HTML report draws; for the report alone.

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/drawing/recording_drawing.hpp>

#include <cstddef>
#include <string>

namespace vorm::evaluation {

/// The drawing of a recording as JSON without `<`. Times are seconds after its origin, a whole
/// number of seconds, in full; NaN is null, and infinities are numbers beyond what doubles hold.
/// Of the explanations the first causes of the first intervals are told.
std::string drawingIsland(const RecordingDrawing& drawing, const RecordingOutcome& outcome,
                          std::size_t mostExplained);

}  // namespace vorm::evaluation
