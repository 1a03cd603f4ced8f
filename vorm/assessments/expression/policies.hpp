#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

/// Formulas are compared with their aliases: an alias is a node of its own, text and all.
struct VORM_ASSESSMENTS_EXPORT Inclusive {};

/// Formulas are compared by what they say: every alias stands for its body.
struct VORM_ASSESSMENTS_EXPORT ModuloAliases {};

}  // namespace vorm::assessments
