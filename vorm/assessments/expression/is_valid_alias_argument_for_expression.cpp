#include "is_valid_alias_argument_for_expression.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>

namespace vorm::assessments {

bool isValidAliasArgumentForExpression::operator()(const Expression& expr,
                                                   const AliasArgument& arg) const {
    return boost::apply_visitor(isArgValid(expr), arg);
}

bool isValidAliasArgumentForExpression::isArgValid::operator()(const Expression& argument) const {
    return isASubExpression(argument)(expression_);
}

bool isValidAliasArgumentForExpression::isASubExpression::operator()(const Expression& expr) const {
    return support::anyNode(expr, [this](const Expression& tree) {
        // An alias is the same as its body, which comes next.
        return boost::get<alias>(&tree) == nullptr &&
               ExpressionEqual<ModuloAliases>()(tree, candidate_);
    });
}

}  // namespace vorm::assessments
