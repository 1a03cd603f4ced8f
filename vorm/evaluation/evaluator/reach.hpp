#pragma once

// For what asks whether an evaluation can meet anything that is open.

#include <vorm/assessments/expression/expression_type.hpp>

namespace vorm::evaluation {

/// How far from a time t the truth and the robustness of a formula look, at most, where each shift
/// and window rounds times by at most `step`; 0 where they look at t alone. Infinity for until,
/// EpsilonShift and slope, and for windows and shifts of numbers, since what these know depends on
/// more than what their signals know there. Linear in the formula.
///
/// Where each signal is known throughout [t - reach, t + reach], and in one piece, the least and
/// the greatest robustness at t are equal: they differ only in what stands for the open. Numbers
/// are made of values at the same time, so that each comparison is known wherever its signals are,
/// and logic at t looks at nothing but comparisons and bool terms in that span. The reverse does
/// not hold.
double reachOf(const assessments::Expression& formula, double step);

}  // namespace vorm::evaluation
