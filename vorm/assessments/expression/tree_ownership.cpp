#include "tree_ownership.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>

#include <utility>
#include <vector>

namespace vorm::assessments::detail {
namespace {

template <class Node>
constexpr bool isInner = std::is_base_of_v<InnerNode, Node>;

template <class Pointer>
struct InnerNodeOf : boost::static_visitor<Pointer> {
    template <class Node>
    Pointer operator()(Node& node) const noexcept {
        if constexpr (isInner<Node>) {
            return &node;
        } else {
            return nullptr;
        }
    }
};

const InnerNode* innerNode(const Expression& tree) noexcept {
    return boost::apply_visitor(InnerNodeOf<const InnerNode*>(), tree);
}

InnerNode* innerNode(Expression& tree) noexcept {
    return boost::apply_visitor(InnerNodeOf<InnerNode*>(), tree);
}

struct RootCopy : boost::static_visitor<Expression> {
    template <class Node>
    Expression operator()(const Node& node) const {
        if constexpr (isInner<Node>) {
            return Node(node, WithoutChildren());
        } else {
            return node;
        }
    }
};

Expression rootCopy(const Expression& tree) {
    return boost::apply_visitor(RootCopy(), tree);
}

struct Copy {
    const Expression* from;
    Expression* to;
};

void copyChildrenLater(const Expression& from, Expression& to, std::vector<Copy>& pending) {
    std::size_t next = pending.size();
    support::forEachChild<Inclusive>(from, [&](const Expression& child) {
        pending.push_back({&child, nullptr});
    });
    support::forEachChild<Inclusive>(to, [&](Expression& child) { pending[next++].to = &child; });
}

}  // namespace

InnerNode::InnerNode(std::size_t levelsOfChildren) : levels_(levelsOfChildren + 1) {
    if (levels_ > maximumExpressionLevels) {
        throw AssessmentInternalException("An expression can have at most " +
                                          std::to_string(maximumExpressionLevels) + " levels.");
    }
}

/// A list of places that hold inner nodes, linked through these nodes.
class SlotList {
public:
    /// Leaves are not listed.
    void push(Expression& slot) noexcept {
        if (InnerNode* node = innerNode(slot)) {
            node->next_ = std::exchange(first_, &slot);
        }
    }

    /// The place pushed last, or null.
    Expression* pop() noexcept {
        return first_ == nullptr ? nullptr : std::exchange(first_, innerNode(*first_)->next_);
    }

private:
    Expression* first_ = nullptr;
};

std::size_t levelsOf(const Expression& tree) noexcept {
    const InnerNode* node = innerNode(tree);
    return node == nullptr ? 1 : node->levels();
}

Expression copyOf(const Expression& source) {
    Expression result = rootCopy(source);
    std::vector<Copy> pending;
    copyChildrenLater(source, result, pending);
    while (!pending.empty()) {
        const Copy copy = pending.back();
        pending.pop_back();
        *copy.to = rootCopy(*copy.from);
        copyChildrenLater(*copy.from, *copy.to, pending);
    }
    return result;
}

Expression taken(Expression& source) {
    // Only between variants of one kind does boost::variant hand over the node itself.
    Expression result = innerNode(source) == nullptr ? Expression() : rootCopy(source);
    result = std::move(source);
    return result;
}

void dismantle(Expression& tree) noexcept {
    SlotList opened;
    SlotList emptied;
    opened.push(tree);
    while (Expression* slot = opened.pop()) {
        support::forEachChild<Inclusive>(*slot, [&](Expression& child) { opened.push(child); });
        emptied.push(*slot);
    }
    // Children stand before their parents, so that each node dies when it has only leaves left.
    while (Expression* slot = emptied.pop()) {
        *slot = nilClass();
    }
}

}  // namespace vorm::assessments::detail
