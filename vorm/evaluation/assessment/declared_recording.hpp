#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>

namespace vorm::evaluation {

/// A recording of a second in which each signal that the layout declares with its type is zero, or
/// the first member, false: something to try formulas on before there are data. Signals of types
/// whose values cannot be interpolated are held.
Recording declaredRecording(const RecordingLayout& layout);

}  // namespace vorm::evaluation
