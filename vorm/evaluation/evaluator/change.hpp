#pragma once

// For the evaluator: when a value changes.

#include <vorm/evaluation/evaluator/truth.hpp>

namespace vorm::evaluation {

/// True for the one representable time at which a held quantity has another value than just before.
/// False at the first time at which it is known, and open where what was just before is not. Throws
/// AssessmentInternalException for a line. Linear.
Truth changesOf(const TracePieces& quantity);

}  // namespace vorm::evaluation
