#pragma once

// How leaves of a formula are written so that they read back. For formulaText.

#include <vorm/assessments/expression/expression_type.hpp>

#include <string>

namespace vorm::evaluation {

/// A name of a signal, in quotes where it needs them.
std::string nameText(const std::string& name);

/// A literal: `5`, `int8(5)`, `'N'`; with its type in any case where it `showsType`.
std::string literalText(const assessments::constantValue& literal, bool showsType);

}  // namespace vorm::evaluation
