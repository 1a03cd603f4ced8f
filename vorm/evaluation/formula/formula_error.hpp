#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vorm::evaluation {

/// A formula that cannot be read or does not fit together.
class FormulaError : public std::runtime_error {
public:
    /// The bytes [begin, begin + length) of a formula's text.
    struct Span {
        std::size_t begin = 0;
        std::size_t length = 0;
    };

    /// what() is the message: one clause without a full stop.
    FormulaError(const std::string& message, Span where, std::string advice = {},
                 std::string inDefinition = {})
        : std::runtime_error(message),
          span_(where),
          advice_(std::move(advice)),
          definition_(std::move(inDefinition)) {}

    /// What the message is about.
    const Span& span() const { return span_; }
    /// What to do, or empty.
    const std::string& advice() const { return advice_; }
    /// The definition whose text the span is in; empty for the formula's own text.
    const std::string& definition() const { return definition_; }

private:
    Span span_;
    std::string advice_;
    std::string definition_;
};

}  // namespace vorm::evaluation
