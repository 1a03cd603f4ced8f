#pragma once

#include <vorm/evaluation/text/input_error.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The bytes [begin, begin + length) of a formula's text.
struct TextSpan {
    std::size_t begin = 0;
    std::size_t length = 0;
};

/// A formula that cannot be read or does not fit together. Its problem has line and column in the
/// formula's text and no file; `placed` tells where that text stands in a file.
class FormulaError : public InputError {
public:
    /// An error that is thrown before the text is at hand; `within` makes it complete.
    FormulaError(std::string message, TextSpan span, std::string advice = {},
                 std::string inDefinition = {});

    /// What the message is about.
    const TextSpan& span() const { return span_; }
    /// The definition whose text the span is in; empty for the formula's own text.
    const std::string& definition() const { return definition_; }

    /// The error with the place of its span in that text, and the line there as its excerpt.
    FormulaError within(std::string_view text) const;

private:
    FormulaError(InputProblem problem, const FormulaError& error);

    TextSpan span_;
    std::string definition_;
};

}  // namespace vorm::evaluation
