#include "formula.hpp"
#include "literal.hpp"
#include "node_builder.hpp"
#include "tree_size.hpp"

#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::Expression;

Expression leafOf(const SyntaxNode& node) {
    switch (node.kind) {
        case SyntaxKind::Number:
            return literalOf(node, assessments::valueTypeIndex<double>);
        case SyntaxKind::TypedLiteral:
            return literalOf(node, node.target);
        case SyntaxKind::Member:
            return unknownMember(node.text);
        default:
            return signalOf(node.text);
    }
}

Expression treeOf(const ParsedFormula& formula) {
    sizeOf(formula.nodes(), [](const SyntaxNode&) { return TreeSize(); });
    NodeBuilder builder(second);
    std::vector<Expression> trees;
    // Growth would copy the trees.
    trees.reserve(formula.nodes().size());
    for (const SyntaxNode& node : formula.nodes()) {
        trees.push_back(operandsOf(node.kind) == 0 ? leafOf(node)
                                                   : builder.operatorOf(node, trees));
    }
    return std::move(trees.back());
}

}  // namespace

Expression expressionOf(const ParsedFormula& formula) {
    try {
        return treeOf(formula);
    } catch (const FormulaError& error) {
        throw error.within(formula.text());
    }
}

}  // namespace vorm::evaluation
