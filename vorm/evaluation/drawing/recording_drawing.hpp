#pragma once

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/drawing/signal_drawing.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace vorm::evaluation {

/// A constant that a signal is compared with.
struct Threshold {
    std::size_t signal;  ///< its position among those of the recording's drawing
    double value;
};

/// What is drawn of one assessment.
struct AssessmentDrawing {
    std::vector<std::size_t> signals;  ///< their positions in the drawing of the recording
    std::vector<Threshold> thresholds;
    /// Where there is no result: the open spans of the outcome, or all of the range where nothing
    /// is known of it.
    std::vector<TimeSpan> open;
};

/// What is drawn of a recording: each signal once, whatever assessments it is drawn for.
struct RecordingDrawing {
    std::size_t recording = 0;  ///< its place among those of the run
    Timeline timeline;
    std::vector<SignalDrawing> signals;
    /// In the order of the outcome; nothing for those that are not drawn.
    std::vector<std::optional<AssessmentDrawing>> assessments;
};

struct DrawingOptions {
    bool drawsAll = false;  ///< also what passes
    bool strict = false;    ///< also what passes, but is open at some time
    /// How signals are thinned. The spans that they are drawn in full around are the first failing
    /// intervals of each assessment.
    Thinning thinning;
    std::size_t mostFullIntervals = 20;
};

/// The signals of the assessments that did not pass, in the ranges of these. To be called with what
/// RunOptions::assessed is given. Linear in the samples of these signals.
RecordingDrawing drawRecording(const AssessmentFile& file, const AssessedRecording& assessed,
                               const DrawingOptions& options = {});

}  // namespace vorm::evaluation
