#pragma once

// How large the parts of a tree are; for the sources of this folder.

#include <vorm/assessments/expression/tree_walk.hpp>

#include <unordered_map>
#include <vector>

namespace vorm::evaluation {

/// The numbers of nodes of all parts of a tree, to which it refers. An alias counts as its body.
/// Linear in the tree.
class NodeCounts {
public:
    explicit NodeCounts(const assessments::Expression& tree) {
        using assessments::Expression;
        namespace support = assessments::support;
        std::vector<const Expression*> parts{&tree};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            support::forEachChild<assessments::Inclusive>(
                *parts[i], [&](const Expression& child) { parts.push_back(&child); });
        }
        // Children stand behind their parents.
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
            std::size_t count = boost::get<assessments::alias>(*part) == nullptr ? 1 : 0;
            support::forEachChild<assessments::ModuloAliases>(
                **part, [&](const Expression& child) { count += counts_.at(&child); });
            counts_.emplace(*part, count);
        }
    }

    /// Of a part of the tree.
    std::size_t of(const assessments::Expression& part) const { return counts_.at(&part); }

private:
    std::unordered_map<const assessments::Expression*, std::size_t> counts_;
};

}  // namespace vorm::evaluation
