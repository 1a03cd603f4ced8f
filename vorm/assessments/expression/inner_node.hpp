#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/expression/expression_type.hpp>

#include <cstddef>

namespace vorm::assessments::detail {

/// Asks a constructor for a copy of a node whose children are nilClass. For the library's own use.
struct WithoutChildren {};

/// What every node with children knows.
class VORM_ASSESSMENTS_EXPORT InnerNode {
public:
    /// The levels of the tree under and including this node.
    std::size_t levels() const noexcept { return levels_; }

protected:
    /// A node over children of at most that many levels. Throws AssessmentInternalException when
    /// that makes more levels than a tree can have.
    explicit InnerNode(std::size_t levelsOfChildren);

private:
    friend class SlotList;

    std::size_t levels_;
    // The list that a tree is taken apart with runs through its nodes, since a destructor must not
    // need memory.
    Expression* next_ = nullptr;
};

}  // namespace vorm::assessments::detail
