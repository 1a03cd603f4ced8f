#pragma once

// How large the tree of a formula will be, before it is built: implications and definitions copy
// their parts, so that a short text can stand for a tree that no machine holds.

#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <cstddef>
#include <functional>

namespace vorm::evaluation {

struct TreeSize {
    std::size_t nodes = 1;
    std::size_t levels = 1;  ///< of the tree, at least
    std::size_t height = 1;  ///< of the text, definitions expanded
};

/// The size of the tree of a formula, given that of what its names stand for. Throws FormulaError
/// where it passes maximumFormulaNodes, maximumExpressionLevels or ParsedFormula::maximumNesting.
TreeSize sizeOf(const SyntaxNodes& nodes,
                const std::function<TreeSize(const SyntaxNode&)>& sizeOfName);

}  // namespace vorm::evaluation
