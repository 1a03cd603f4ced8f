#pragma once

// For the evaluator: what one sub-formula is worth.

#include <vorm/evaluation/evaluator/truth.hpp>

#include <variant>

namespace vorm::evaluation {

/// Truth of what is bool, pieces of everything else. What has no pieces has no type either, and is
/// truth that is open throughout where one is asked for.
using Value = std::variant<SharedPieces, SharedTruth>;

/// Whether a value is truth.
inline bool isTruth(const Value& value) {
    return std::holds_alternative<SharedTruth>(value);
}

/// The value as truth. Throws AssessmentTypeException for numbers.
SharedTruth asTruth(const Value& value);

/// The value as pieces, those of bool for truth.
SharedPieces asPieces(const Value& value);

/// Throws AssessmentBinaryTypeException unless both are truth, or both pieces of one type, or one
/// has no type.
void requireSameType(const Value& left, const Value& right);

}  // namespace vorm::evaluation
