#pragma once

// The parameters of an assessment file; included by the sources of this folder only.

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/toml_table.hpp>

#include <vector>

namespace vorm::evaluation::detail {

/// A value of the table [parameters]. Throws InputError for a name that formulas cannot write, and
/// for a value that is no number, bool or text.
FormulaParameter readParameter(const TomlDocument& document, const std::string& name,
                               const toml::node& node);

/// Sets some of the parameters of a file. Throws InputError as parseAssessmentFile does for its
/// settings.
void setParameters(FormulaParameters& parameters, const std::vector<ParameterSetting>& settings,
                   const std::string& file);

}  // namespace vorm::evaluation::detail
