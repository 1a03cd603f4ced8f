#pragma once

// Who is to blame at one time; for the sources of this folder.

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>

#include <functional>
#include <vector>

namespace vorm::evaluation::detail {

/// A part of a formula that has the value `value` throughout the closed span of time.
struct DecidingPart {
    const assessments::Expression* formula;
    bool value;
    double from;
    double to;
};

/// The truth values of a sub-formula.
using TruthOf = std::function<SharedTruth(const assessments::Expression&)>;

/// The comparisons and bool signals that decide the value of a formula at a time, left to right.
/// It descends into the operands that make the value what it is: into the false ones of a false
/// conjunction, to the first failing time of a `Globally` that fails.
std::vector<DecidingPart> decidingParts(const assessments::Expression& formula, double time,
                                        const TruthOf& truthOf);

}  // namespace vorm::evaluation::detail
