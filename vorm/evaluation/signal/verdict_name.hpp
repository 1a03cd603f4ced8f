#pragma once

#include <vorm/assessments/value_types.hpp>

#include <optional>
#include <string_view>

namespace vorm::evaluation {

/// `PASS`, `FAIL` or `NO_RESULT`: in formulas, in recordings and in reports.
std::string_view verdictName(assessments::resultEnum_t verdict);

/// The verdict of that name, or nothing.
std::optional<assessments::resultEnum_t> verdictOf(std::string_view name);

}  // namespace vorm::evaluation
