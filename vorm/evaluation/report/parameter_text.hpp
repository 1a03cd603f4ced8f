#pragma once

#include <vorm/evaluation/formula/formula_parameter.hpp>

#include <string>

namespace vorm::evaluation {

/// The parameters with their values, in brackets the one of the file where another was set:
/// `limit = 30 (27.8), mode = "active"`. On one line; empty where there is none.
std::string parametersText(const FormulaParameters& parameters);

/// The same of those alone that were set: `with limit = 30 (27.8)`.
std::string settingsText(const FormulaParameters& parameters);

}  // namespace vorm::evaluation
