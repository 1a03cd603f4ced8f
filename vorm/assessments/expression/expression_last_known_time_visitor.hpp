#pragma once

#include <vorm/assessments/expression/time_extent_visitor.hpp>

namespace vorm::assessments {

/// The latest last known time among a formula's signals that have a trace; minus infinity without
/// one, and NaN where one of them is NaN. Offsets and windows do not count, literals neither.
/// Linear in the formula.
class VORM_ASSESSMENTS_EXPORT ExpressionLastKnownTimeVisitor
    : public detail::TimeExtentVisitor<detail::LatestKnown> {
public:
    /// The traces must outlive the visitor.
    explicit ExpressionLastKnownTimeVisitor(const ExpressionTraces& traces)
        : TimeExtentVisitor(traces) {}

    double lastKnownTime(const Expression& expression) const { return ofTree(expression); }

    /// The last known time of the trace of that very formula, or minus infinity.
    double expressionLastKnownTime(const Expression& leaf) const { return ofTrace(leaf); }
};

}  // namespace vorm::assessments
