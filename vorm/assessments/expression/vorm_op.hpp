#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

/// What an operator node of a formula does. The numbers are hashed and never change.
enum class VORM_ASSESSMENTS_EXPORT VORM_OP : int {
    None = 0,  ///< reserved; no node has it
    Cast = 1,  ///< reserved for cast_op, which no factory operation builds
    Plus = 2,
    Minus = 3,
    UnaryMinus = 4,
    Multiply = 5,
    Abs = 6,
    Slope = 7,
    Reserved8 = 8,  ///< reserved; no node has it
    Reserved9 = 9,  ///< reserved; no node has it
    Eq = 10,
    Neq = 11,
    Lt = 12,
    Leq = 13,
    Gt = 14,
    Geq = 15,
    And = 16,
    Or = 17,
    Not = 18,
    Eventually = 19,
    Globally = 20,
    Until = 21,
    Shift = 22,
    EpsilonShift = 23,
    Once = 24,
    Historically = 25,
    Since = 26,
    Divide = 27,
    Power = 28,
    Minimum = 29,
    Maximum = 30,
    Least = 31,     ///< Minimum over a window of time
    Greatest = 32,  ///< Maximum over a window of time
    Integral = 33,
    Mean = 34,
    Duration = 35,
    Count = 36,
    Changed = 37,
    SquareRoot = 38,
    Exponential = 39,
    Logarithm = 40,
    Sine = 41,
    Cosine = 42,
    Round = 43,
    Floor = 44,
    Ceiling = 45,
    Sign = 46,
    Implies = 47,
    Rises = 48,  ///< becomes true
    Falls = 49,  ///< becomes false
};

}  // namespace vorm::assessments
