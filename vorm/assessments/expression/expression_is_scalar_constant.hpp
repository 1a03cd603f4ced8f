#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/variant/static_visitor.hpp>

namespace vorm::assessments {

/// Whether each leaf of a formula is a literal or a signal whose trace is a constant scalar, that
/// is, has exactly one sample, whatever its time. Leaves are looked at from left to right up to the
/// first that is not; nilClass and a signal without a trace are not.
class VORM_ASSESSMENTS_EXPORT ExpressionIsScalarConstant : public boost::static_visitor<bool> {
public:
    /// The traces must outlive the visitor.
    explicit ExpressionIsScalarConstant(const ExpressionTraces& traces) : traces_(traces) {}

    /// Whether there is a trace for that very formula and it is a constant scalar.
    bool isConstantScalarTrace(const Expression& leaf) const;

    bool operator()(const Expression& expression) const;
    bool operator()(const nilClass&) const { return false; }
    bool operator()(const constantValue&) const { return true; }
    bool operator()(const variable& node) const;
    bool operator()(const unary_op& node) const;
    bool operator()(const binary_op& node) const;
    bool operator()(const cast_op& node) const;
    bool operator()(const alias& node) const;

private:
    const ExpressionTraces& traces_;
};

}  // namespace vorm::assessments
