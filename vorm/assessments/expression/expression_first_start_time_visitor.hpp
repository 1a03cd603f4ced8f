#pragma once

#include <vorm/assessments/expression/time_extent_visitor.hpp>

namespace vorm::assessments {

/// The earliest start among a formula's signals that have a trace; plus infinity without one. A
/// signal whose trace is empty or constant starts at minus infinity; where one of them starts at
/// NaN, so does the formula. Offsets and windows do not count, literals neither. Linear in the
/// formula.
class VORM_ASSESSMENTS_EXPORT ExpressionFirstStartTimeVisitor
    : public detail::TimeExtentVisitor<detail::EarliestStart> {
public:
    /// The traces must outlive the visitor.
    explicit ExpressionFirstStartTimeVisitor(const ExpressionTraces& traces)
        : TimeExtentVisitor(traces) {}

    double firstStartTime(const Expression& expression) const { return ofTree(expression); }

    /// The start of the trace of that very formula, or plus infinity.
    double expressionFirstStartTime(const Expression& leaf) const { return ofTrace(leaf); }
};

}  // namespace vorm::assessments
