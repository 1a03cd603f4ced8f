#pragma once

// What most sources of the extension include, compiled once.

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
