#pragma once

// How numbers are written in formulas: as a stream writes them by default, with six digits, but
// the same in every locale.

#include <string>

namespace vorm::assessments::detail {

std::string numberText(double number);

}  // namespace vorm::assessments::detail
