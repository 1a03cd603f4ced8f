// The extension `_vorm`: what the package `vorm` is made of. It knows NumPy, but not pandas.

#include "arrays.hpp"
#include "column.hpp"
#include "file.hpp"
#include "formula.hpp"
#include "outcome.hpp"
#include "run.hpp"

#include <pybind11/pybind11.h>

namespace py = pybind11;

namespace {

// What is wrong with an input is thrown in Python with its parts.
void translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const vorm::evaluation::InputError& error) {
        const py::object raised = vorm::python::errorObject(error);
        PyErr_SetObject(py::type::of(raised).ptr(), raised.ptr());
    }
}

}  // namespace

PYBIND11_MODULE(_vorm, module) {
    py::register_local_exception_translator(&translate);
    py::enum_<vorm::python::TimeForm>(module, "TimeForm")
        .value("Seconds", vorm::python::TimeForm::Seconds)
        .value("Nanoseconds", vorm::python::TimeForm::Nanoseconds);
    vorm::python::addFiles(module);
    vorm::python::addColumns(module);
    vorm::python::addFormulas(module);
    vorm::python::addRuns(module);
    vorm::python::addOutcomes(module);
    module.attr("version") = VORM_VERSION;
}
