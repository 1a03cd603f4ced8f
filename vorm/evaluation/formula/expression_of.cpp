#include "formula.hpp"
#include "literal.hpp"
#include "node_builder.hpp"
#include "tree_size.hpp"

#include <stdexcept>
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
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
            return signalOf(node.text);
        case SyntaxKind::Unary:
        case SyntaxKind::Window:
        case SyntaxKind::Shifted:
        case SyntaxKind::Cast:
        case SyntaxKind::Binary:
        case SyntaxKind::Until:
        case SyntaxKind::Crossing:
            break;
    }
    throw std::logic_error("an operator is no leaf");
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
        throw formula.placed(error);
    }
}

}  // namespace vorm::evaluation
