#pragma once

// The text of a cell as a value of a type. Throws InputError, which names no place, for what
// is none. The subject is what the cell belongs to, `column 'v'`.

#include <vorm/evaluation/table/row_reader.hpp>

#include <string>
#include <string_view>

namespace vorm::evaluation {

/// Defined for each of the value types.
template <class T>
T cellValue(std::string_view text, const std::string& subject);

/// For a number with a decimal point where numbers have a comma: it may stand between thousands.
[[noreturn]] void failForPoint(const Cell& cell, const std::string& subject);

/// `true` and `false` in lower case, upper case or with a capital.
bool isTruthText(std::string_view text);

}  // namespace vorm::evaluation
