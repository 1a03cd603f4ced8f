#include "expression_is_scalar_constant.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>

namespace vorm::assessments {
namespace {

// Whether a node by itself rules out that the formula is constant; inner nodes never do.
struct IsVarying : boost::static_visitor<bool> {
    const ExpressionIsScalarConstant& isConstant;

    explicit IsVarying(const ExpressionIsScalarConstant& test) : isConstant(test) {}

    bool operator()(const nilClass& leaf) const { return !isConstant(leaf); }
    bool operator()(const constantValue& leaf) const { return !isConstant(leaf); }
    bool operator()(const variable& leaf) const { return !isConstant(leaf); }
    bool operator()(const detail::InnerNode&) const { return false; }
};

}  // namespace

bool ExpressionIsScalarConstant::isConstantScalarTrace(const Expression& leaf) const {
    const auto trace = traces_.find(leaf);
    return trace != traces_.end() && trace->second.isConstantScalar();
}

bool ExpressionIsScalarConstant::operator()(const Expression& expression) const {
    return !support::anyNode(expression, [this](const Expression& tree) {
        return boost::apply_visitor(IsVarying(*this), tree);
    });
}

bool ExpressionIsScalarConstant::operator()(const variable& node) const {
    return isConstantScalarTrace(node);
}

bool ExpressionIsScalarConstant::operator()(const unary_op& node) const {
    return (*this)(node.child);
}

bool ExpressionIsScalarConstant::operator()(const binary_op& node) const {
    return (*this)(node.lhs) && (*this)(node.rhs);
}

bool ExpressionIsScalarConstant::operator()(const cast_op& node) const {
    return (*this)(node.child);
}

bool ExpressionIsScalarConstant::operator()(const alias& node) const {
    return (*this)(node.body);
}

}  // namespace vorm::assessments
