#pragma once

// For the evaluator: the past as a future. What looks back is what looks ahead, seen in the mirror
// t -> -t, which no time is rounded in.

#include <vorm/evaluation/evaluator/truth.hpp>

namespace vorm::evaluation {

/// The truth that at each time is what `truth` is at the opposite of that time. Linear.
Truth mirrored(const Truth& truth);

/// The same of a robustness over all of time.
assessments::TimedTrace mirrored(const assessments::TimedTrace& robustness);

}  // namespace vorm::evaluation
