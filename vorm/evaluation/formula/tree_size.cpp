#include "tree_size.hpp"

#include <vorm/evaluation/formula/formula.hpp>

#include <algorithm>
#include <string>

namespace vorm::evaluation {
namespace {

// A composite of `nodes` operators in up to `levels` levels that holds its operands several times.
struct Shape {
    std::size_t nodes = 1;
    std::size_t levels = 1;
    std::size_t leftCopies = 1;
    std::size_t rightCopies = 1;
};

Shape shapeOf(SyntaxKind kind) {
    switch (kind) {
        case SyntaxKind::Crossing:
            return {4, 4, 3, 2};
        case SyntaxKind::Number:
        case SyntaxKind::TypedLiteral:
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
        case SyntaxKind::Member:
        case SyntaxKind::Unary:
        case SyntaxKind::Window:
        case SyntaxKind::Shifted:
        case SyntaxKind::Cast:
        case SyntaxKind::Binary:
        case SyntaxKind::Until:
            break;
    }
    return {};
}

TreeSize sizeOf(const SyntaxNodes& nodes, const SyntaxNode& node,
                const std::vector<TreeSize>& sizes) {
    const Shape shape = shapeOf(node.kind);
    const TreeSize none{0, 0, 0};
    const TreeSize& left = sizes[node.left];
    const TreeSize& right = operandsOf(node.kind) == 2 ? sizes[node.right] : none;
    return {shape.nodes + shape.leftCopies * left.nodes + shape.rightCopies * right.nodes,
            shape.levels + std::max(left.levels, right.levels),
            heightOf(nodes, node, left.height, right.height)};
}

void require(bool isMet, const std::string& limit, const SyntaxNode& node) {
    if (!isMet) {
        throw FormulaError("the formula has more than " + limit, node.where,
                           "nest fewer definitions, chains of comparisons, Rise and Fall");
    }
}

}  // namespace

TreeSize sizeOf(const SyntaxNodes& nodes,
                const std::function<TreeSize(const SyntaxNode&)>& sizeOfName) {
    std::vector<TreeSize> sizes;
    sizes.reserve(nodes.size());
    for (const SyntaxNode& node : nodes) {
        const bool isName = node.kind == SyntaxKind::Name || node.kind == SyntaxKind::QuotedName;
        const TreeSize size = isName                      ? sizeOfName(node)
                              : operandsOf(node.kind) > 0 ? sizeOf(nodes, node, sizes)
                                                          : TreeSize();
        require(size.nodes <= maximumFormulaNodes,
                std::to_string(maximumFormulaNodes) + " operators and operands", node);
        require(size.levels <= assessments::maximumExpressionLevels,
                std::to_string(assessments::maximumExpressionLevels) + " levels", node);
        require(size.height <= ParsedFormula::maximumNesting,
                std::to_string(ParsedFormula::maximumNesting) + " levels of nesting", node);
        sizes.push_back(size);
    }
    return sizes.back();
}

}  // namespace vorm::evaluation
