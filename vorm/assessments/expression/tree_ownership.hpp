#pragma once

// How nodes own their children: copies, moves and destruction of trees of any depth with a bounded
// stack. The node classes include it. boost::variant itself would recurse for each of the three;
// even its move does, since recursive_wrapper moves into a newly allocated node.

#include <vorm/assessments/expression/expression.hpp>

#include <cstddef>

namespace vorm::assessments::detail {

/// The levels of a tree: 1 for a leaf.
std::size_t levelsOf(const Expression& tree) noexcept;

/// A copy of the whole tree. Linear.
Expression copyOf(const Expression& source);

/// The tree of `source`, whose nodes stay where they are in memory; `source` keeps a root without
/// children. Constant time.
Expression taken(Expression& source);

/// Makes the tree nilClass. Linear; needs no memory.
void dismantle(Expression& tree) noexcept;

}  // namespace vorm::assessments::detail
