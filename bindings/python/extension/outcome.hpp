#pragma once

// What Python asks of the parts of a run.

#include "run.hpp"

namespace vorm::python {

/// One recording of a run.
struct RecordingResult {
    std::shared_ptr<const Run> run;
    std::size_t recording;

    const evaluation::RecordingOutcome& outcome() const {
        return run->outcome.recordings[recording];
    }
};

/// Adds RecordingResult and AssessmentResult to the module.
void addOutcomes(pybind11::module_& module);

/// The error as vorm.Error, or None.
pybind11::object errorObject(const std::optional<evaluation::InputError>& error);

}  // namespace vorm::python
