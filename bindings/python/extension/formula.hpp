#pragma once

// Formulas evaluated on a recording without an assessment file.

#include <pybind11/pybind11.h>

namespace vorm::python {

/// Adds Formula to the module.
void addFormulas(pybind11::module_& module);

}  // namespace vorm::python
