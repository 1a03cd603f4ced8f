#pragma once

// For the formula graph: numbers for sub-formulas, equal ones where ExpressionEqual under
// ModuloAliases holds. A node is looked up by the numbers of its children (hash-consing: Ershov,
// "On programming of arithmetic operations", 1958), so that a tree costs one look at each of its
// nodes.

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/functional/hash.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace vorm::evaluation {

struct SubFormula {
    const assessments::Expression* formula;  ///< with its aliases
    std::array<std::size_t, 2> children{};
    std::size_t childCount = 0;
};

class SubFormulas {
public:
    /// The number of a formula. New sub-formulas are numbered on the way, children first.
    std::size_t numberOf(const assessments::Expression& root);

    const std::vector<SubFormula>& all() const { return all_; }

private:
    using Expression = assessments::Expression;
    /// Kind of node, operator, two parameters, numbers of the children.
    using OperatorKey = std::array<std::uint64_t, 6>;
    struct LeafHash {
        std::size_t operator()(const Expression* leaf) const;
    };
    struct LeafEqual {
        bool operator()(const Expression* left, const Expression* right) const;
    };

    std::size_t numberOfNode(const SubFormula& node);

    std::vector<SubFormula> all_;
    std::unordered_map<const Expression*, std::size_t, LeafHash, LeafEqual> leaves_;
    std::unordered_map<OperatorKey, std::size_t, boost::hash<OperatorKey>> operators_;
};

}  // namespace vorm::evaluation
