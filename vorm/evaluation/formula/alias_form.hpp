#pragma once

// Recognises the aliases that have operators of their own in the text of a formula.

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <optional>
#include <string>

namespace vorm::evaluation {

/// `before` left `between` right `after`.
struct AliasForm {
    std::string before;
    const assessments::Expression* left;
    std::string between;
    const assessments::Expression* right;
    std::string after;
};

/// The form of a rise or a fall by some number; nothing for another alias, and for one whose text
/// says something else than its body. Linear in the alias.
std::optional<AliasForm> formOf(const assessments::alias& node, const TimeTexts& times);

}  // namespace vorm::evaluation
