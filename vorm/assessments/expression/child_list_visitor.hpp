#pragma once

#include <vorm/assessments/expression/expression.hpp>

#include <boost/variant/static_visitor.hpp>

#include <string>
#include <vector>

namespace vorm::assessments {

/// One child of a formula, for display.
struct VORM_ASSESSMENTS_EXPORT ExpressionChild {
    Expression expression;
    std::string text;  ///< as to_string gives it
};

/// The children of a node, for a display of the tree, in the order in which they are evaluated.
/// Those of an alias are the formulas among its arguments, which is what its text shows; a leaf
/// has none. Linear in the formula.
class VORM_ASSESSMENTS_EXPORT childListVisitor
    : public boost::static_visitor<std::vector<ExpressionChild>> {
public:
    class aliasArgsVisitor;

    result_type operator()(const nilClass&) const { return {}; }
    result_type operator()(const constantValue&) const { return {}; }
    result_type operator()(const variable&) const { return {}; }
    result_type operator()(const unary_op& node) const;
    result_type operator()(const binary_op& node) const;
    result_type operator()(const alias& node) const;
};

/// What an argument of an alias adds to the children: itself if it is a formula.
class VORM_ASSESSMENTS_EXPORT childListVisitor::aliasArgsVisitor
    : public boost::static_visitor<std::vector<ExpressionChild>> {
public:
    result_type operator()(bool) const { return {}; }
    result_type operator()(int) const { return {}; }
    result_type operator()(double) const { return {}; }
    result_type operator()(const char*) const { return {}; }
    result_type operator()(const std::string&) const { return {}; }
    result_type operator()(const Expression& argument) const;
};

}  // namespace vorm::assessments
