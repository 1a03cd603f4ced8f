#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

namespace vorm::assessments {

/// A closed span of time offsets, in the unit of the signals' times.
struct VORM_ASSESSMENTS_EXPORT InfluenceSpan {
    double lo;
    double hi;

    friend bool operator==(const InfluenceSpan&, const InfluenceSpan&) = default;
};

/// Which stretch of each sub-formula's course a formula depends on: its value at a time t does not
/// become another one when a sub-formula changes only outside [t + lo, t + hi]. Whether it is known
/// at t is another matter: that depends on where traces begin and end and, for Until, on where the
/// right operand's last sample lies.
///
/// Along the tree offsets and windows add up; where a sub-formula occurs several times, its span
/// covers all of them. What each operator looks at of its operand:
/// - arithmetic, comparison, logic and casts: [0, 0];
/// - Shift[d]: [d, d]; Globally[a,b] and Eventually[a,b]: [a, b];
/// - Until[a,b]: [0, +inf) of the left operand and [min(0, a), +inf) of the right one, since it
///   contains an unbounded until, which a NaN makes NaN however late it comes;
/// - EpsilonShift: one representable time back, or ahead for a negative or NaN direction;
/// - Slope: up to one representable time ahead, where the straight line from t goes;
/// - an offset or bound that is NaN: everything.
///
/// One representable time is the least positive number here, which any other offset absorbs, and
/// moved sample times are rounded; a caller that needs outer bounds widens each end by one
/// representable time per level of the formula. Operands of one pointwise operator are taken to be
/// read alike: where a held one meets a linear one in arithmetic, the step at its next sample shows
/// from the sample before it.
class VORM_ASSESSMENTS_EXPORT ExpressionInfluenceConeVisitor {
public:
    using Cone = ExpressionMap<InfluenceSpan, ModuloAliases>;

    /// The spans of the formula itself, [0, 0], and of all its sub-formulas, aliases taken as their
    /// bodies. Time and memory grow with the sum of the sizes of all sub-formulas.
    Cone getTree(const Expression& expression) const;
};

}  // namespace vorm::assessments
