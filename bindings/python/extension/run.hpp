#pragma once

// Runs, kept with what their reports and plots draw.

#include "file.hpp"

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/drawing/recording_drawing.hpp>

#include <pybind11/pybind11.h>

namespace vorm::python {

/// What became of assessments on recordings.
struct Run {
    File file;
    evaluation::RunOutcome outcome;
    std::vector<evaluation::RecordingDrawing> drawings;  ///< of recordings that could be used

    /// Null for a recording that could not be used.
    const evaluation::RecordingDrawing* drawingOf(std::size_t recording) const;
};

/// Adds Run to the module.
void addRuns(pybind11::module_& module);

}  // namespace vorm::python
