#pragma once

// For the evaluator: the robustness of until.

#include <vorm/assessments/facade/timed_trace.hpp>

namespace vorm::evaluation {

/// By how much, at each time t, the goal is reached at some time of [t + a, t + b] and the
/// condition holds from t up to that time, at t itself and throughout [t, t + a]. Both are
/// robustnesses over all of time. Linear.
assessments::TimedTrace untilRobustness(const assessments::TimedTrace& condition,
                                        const assessments::TimedTrace& goal, double a, double b);

}  // namespace vorm::evaluation
