#include "sub_formulas.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>

#include <bit>
#include <limits>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// Equal bits where the parameters are the same: the two zeros are, and all NaNs.
std::uint64_t parameterBits(double parameter) {
    if (parameter != parameter) {
        parameter = std::numeric_limits<double>::quiet_NaN();
    }
    return std::bit_cast<std::uint64_t>(parameter == 0 ? 0.0 : parameter);
}

// What tells operators of one kind apart, besides their children.
struct OperatorFields : boost::static_visitor<std::array<std::uint64_t, 3>> {
    template <class Node>
    result_type operator()(const Node& node) const {
        if constexpr (requires { node.op; }) {
            const auto op = static_cast<std::uint64_t>(node.op);
            if constexpr (requires { node.offset; }) {
                return {op, parameterBits(node.offset), 0};
            } else if constexpr (requires { node.a; }) {
                return {op, parameterBits(node.a), parameterBits(node.b)};
            } else if constexpr (requires { node.target; }) {
                return {op, static_cast<std::uint64_t>(node.target.which()), 0};
            } else {
                return {op, 0, 0};
            }
        } else {
            return {};
        }
    }
};

}  // namespace

std::size_t SubFormulas::LeafHash::operator()(const Expression* leaf) const {
    return ExpressionHash<ModuloAliases>()(*leaf);
}

bool SubFormulas::LeafEqual::operator()(const Expression* left, const Expression* right) const {
    return ExpressionEqual<ModuloAliases>()(*left, *right);
}

std::size_t SubFormulas::numberOf(const Expression& root) {
    struct Step {
        const Expression* tree;
        bool childrenAreNumbered;
    };
    std::vector<Step> steps{{&root, false}};
    std::vector<std::size_t> numbers;
    while (!steps.empty()) {
        const Step step = steps.back();
        SubFormula node{step.tree};
        if (!step.childrenAreNumbered) {
            steps.back().childrenAreNumbered = true;
            const auto first = static_cast<std::ptrdiff_t>(steps.size());
            support::forEachChild<ModuloAliases>(support::withoutAliases(*step.tree),
                                                 [&](const Expression& child) {
                                                     steps.push_back({&child, false});
                                                 });
            std::reverse(steps.begin() + first, steps.end());
            continue;
        }
        steps.pop_back();
        support::forEachChild<ModuloAliases>(support::withoutAliases(*step.tree),
                                             [&](const Expression&) { ++node.childCount; });
        for (std::size_t i = node.childCount; i > 0; --i) {
            node.children[i - 1] = numbers.back();
            numbers.pop_back();
        }
        numbers.push_back(numberOfNode(node));
    }
    return numbers.back();
}

std::size_t SubFormulas::numberOfNode(const SubFormula& node) {
    const Expression& operation = support::withoutAliases(*node.formula);
    const auto numbered = [&](auto& numbers, const auto& key) {
        const auto [entry, isNew] = numbers.try_emplace(key, all_.size());
        if (isNew) {
            all_.push_back(node);
        }
        return entry->second;
    };
    if (node.childCount == 0) {
        return numbered(leaves_, &operation);
    }
    const auto fields = boost::apply_visitor(OperatorFields(), operation);
    return numbered(operators_,
                    OperatorKey{static_cast<std::uint64_t>(operation.which()), fields[0], fields[1],
                                fields[2], node.children[0], node.children[1]});
}

}  // namespace vorm::evaluation
