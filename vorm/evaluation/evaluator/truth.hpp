#pragma once

#include <vorm/assessments/trace/timed_trace.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <cstdint>
#include <memory>

namespace vorm::evaluation {

/// Truth in three values over all of time: a held trace of certainlyFalse, isOpen and
/// certainlyTrue that begins at minus infinity and is known for ever. Open is what no recording
/// tells: times before and after it and its holes. In this order Kleene's strong logic is what the
/// numeric operators do: And is the minimum, Or the maximum, negation the negative, a window the
/// extremum, until the supremum of minima. (S. C. Kleene, "Introduction to Metamathematics", 1952,
/// section 64.)
using Truth = assessments::TimedTrace_T<std::int8_t>;

/// Truth that several owners read.
using SharedTruth = std::shared_ptr<const Truth>;

inline constexpr std::int8_t certainlyFalse = -1;
inline constexpr std::int8_t isOpen = 0;
inline constexpr std::int8_t certainlyTrue = 1;

/// The truth of a bool quantity: open wherever it is not known. No pieces give what is open
/// throughout. Throws AssessmentTypeException for any other type. Linear.
Truth truthOf(const TracePieces& pieces);

/// The pieces of bool in which a truth is not open. Linear.
TracePieces knownPieces(const Truth& truth);

/// What the truth was just before each time (direction >= 0), or will be just after it; open where
/// the truth itself is. At the first time at which anything is known nothing lies before: there it
/// is what it is, so that nothing rises or falls at the begin of a recording. Linear.
Truth epsilonShifted(const Truth& truth, double direction);

}  // namespace vorm::evaluation
