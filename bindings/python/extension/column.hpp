#pragma once

// Columns of NumPy arrays, and the recordings that they make.

#include <vorm/evaluation/recording/recording.hpp>

#include <pybind11/pybind11.h>

namespace vorm::python {

/// Adds Column and Recording to the module.
void addColumns(pybind11::module_& module);

}  // namespace vorm::python
