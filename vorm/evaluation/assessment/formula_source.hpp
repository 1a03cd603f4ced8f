#pragma once

#include <vorm/evaluation/formula/formula_error.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <string>

namespace vorm::evaluation {

/// Where the text of a formula stands in a file.
struct FormulaSource {
    std::string text;
    SourceLocation where;  ///< of the text's first character
    /// Whether the file holds the text character for character from there on; escapes in a string
    /// break that, and then errors are placed at the beginning.
    bool verbatim = false;
};

/// The error of a formula as one of the file that it stands in: placed, with the line of the
/// formula as its excerpt.
InputError placed(const FormulaError& error, const FormulaSource& source);

}  // namespace vorm::evaluation
