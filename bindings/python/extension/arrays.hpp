#pragma once

// Times and numbers as NumPy arrays.

#include <vorm/evaluation/time/time_span.hpp>

#include <pybind11/numpy.h>

#include <vector>

namespace vorm::python {

/// How Python gets times: as seconds, each the nearest double, or as whole nanoseconds, each the
/// nearest one.
enum class TimeForm { Seconds, Nanoseconds };

/// Throws pybind11::value_error for a time that nanoseconds of 64 bits do not reach.
std::int64_t nanosecondsOf(evaluation::ExactTime time);

/// As a float or an int.
pybind11::object timeObject(evaluation::ExactTime time, TimeForm form);

pybind11::array timeArray(const std::vector<evaluation::ExactTime>& times, TimeForm form);

/// A row of start and end for each.
pybind11::array spanArray(const std::vector<evaluation::TimeSpan>& spans, TimeForm form);

template <class T>
pybind11::array_t<T> arrayOf(const std::vector<T>& values) {
    return pybind11::array_t<T>(static_cast<pybind11::ssize_t>(values.size()), values.data());
}

}  // namespace vorm::python
