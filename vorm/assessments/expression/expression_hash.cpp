#include "expression_hash.hpp"

#include <vorm/assessments/expression/label_text.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/value_families.hpp>

#include <boost/functional/hash.hpp>

#include <limits>
#include <string_view>
#include <utility>

namespace vorm::assessments {
namespace {

using NodeKinds = boost::mp11::mp_pop_front<boost::mp11::mp_list<void
#define VORM_NODE_KIND(Kind) , Kind
#include <vorm/assessments/expression/node_kinds.def>
                                                                 >>;

template <class Node>
inline constexpr std::size_t kindIndex = boost::mp11::mp_find<NodeKinds, Node>::value;

// boost::hash makes the two zeros alike; that it does so for NaNs depends on its version.
std::size_t hashOf(double number) {
    return boost::hash<double>()(number == number ? number
                                                  : std::numeric_limits<double>::quiet_NaN());
}
std::size_t hashOf(std::string_view text) {
    return boost::hash_range(text.begin(), text.end());
}

struct ValueHash : boost::static_visitor<std::size_t> {
    template <class T>
    std::size_t operator()(const T& value) const {
        if constexpr (support::isReal<T> || support::isHalf<T>) {
            return hashOf(static_cast<double>(value));
        } else if constexpr (support::isInteger<T> || support::isBool<T>) {
            return boost::hash<T>()(value);
        } else if constexpr (support::isFixedPoint<T>) {
            std::size_t hash = hashOf(value.get().toDouble());
            boost::hash_combine(hash, hashOf(value.get().descriptor().text()));
            return hash;
        } else if constexpr (support::isVerdict<T>) {
            return static_cast<std::size_t>(value.get());
        } else {
            static_assert(support::isForgotten<T>, "A value type without a hash.");
        }
    }
};

template <class ChildHash>
struct ArgumentHash : boost::static_visitor<std::size_t> {
    ChildHash& childHash;

    explicit ArgumentHash(ChildHash& hash) : childHash(hash) {}

    std::size_t operator()(bool value) const { return boost::hash<bool>()(value); }
    std::size_t operator()(int value) const { return boost::hash<int>()(value); }
    std::size_t operator()(double value) const { return hashOf(value); }
    std::size_t operator()(const char* text) const { return hashOf(detail::charactersOf(text)); }
    std::size_t operator()(const std::string& text) const { return hashOf(text); }
    std::size_t operator()(const Expression& tree) const { return childHash(tree); }
};

class Seed {
public:
    explicit Seed(std::size_t start) : value_(start) {}

    Seed& add(std::size_t field) {
        boost::hash_combine(value_, field);
        return *this;
    }
    Seed& addBytes(const boost::uuids::uuid& id) {
        for (const std::size_t byte : id) {
            value_ ^= byte + 0x9e3779b9 + (value_ << 6) + (value_ >> 2);
        }
        return *this;
    }
    std::size_t value() const { return value_; }

private:
    std::size_t value_;
};

// The hash of a node, with those of its children from `childHash`, which is called for each child
// of the policy in order.
template <class Policy, class ChildHash>
class NodeHash : public boost::static_visitor<std::size_t> {
public:
    explicit NodeHash(ChildHash& childHash) : childHash_(childHash) {}

    std::size_t operator()(const nilClass&) const { return Seed(kindIndex<nilClass>).value(); }
    std::size_t operator()(const constantValue& node) const {
        return Seed(kindIndex<constantValue>)
            .add(static_cast<std::size_t>(node.tag))
            .add(static_cast<std::size_t>(node.value.which()))
            .add(boost::apply_visitor(ValueHash(), node.value))
            .value();
    }
    std::size_t operator()(const variable& node) const {
        return Seed(kindIndex<variable>).addBytes(node.id).value();
    }
    std::size_t operator()(const unary_op& node) const { return operatorHash(node).value(); }
    std::size_t operator()(const binary_op& node) const { return operatorHash(node).value(); }
    std::size_t operator()(const timed_unary_op& node) const {
        return operatorHash(node).add(hashOf(node.offset)).value();
    }
    std::size_t operator()(const timedwindow_unary_op& node) const { return windowHash(node); }
    std::size_t operator()(const timedwindow_binary_op& node) const { return windowHash(node); }
    std::size_t operator()(const cast_op& node) const {
        return operatorHash(node).add(static_cast<std::size_t>(node.target.which())).value();
    }
    std::size_t operator()(const alias& node) const {
        const std::size_t body = childHash_(node.body);
        if constexpr (std::is_same_v<Policy, ModuloAliases>) {
            return body;
        } else {
            Seed seed(kindIndex<alias>);
            seed.add(body);
            for (const AliasArgument& argument : node.arguments) {
                seed.add(static_cast<std::size_t>(argument.which()));
                seed.add(boost::apply_visitor(ArgumentHash<ChildHash>(childHash_), argument));
            }
            return seed.value();
        }
    }

private:
    template <class Node>
    Seed operatorHash(const Node& node) const {
        Seed seed(kindIndex<Node>);
        seed.add(static_cast<std::size_t>(node.op));
        if constexpr (std::is_base_of_v<unary_op, Node>) {
            seed.add(childHash_(node.child));
        } else {
            seed.add(childHash_(node.lhs)).add(childHash_(node.rhs));
        }
        return seed;
    }

    template <class Node>
    std::size_t windowHash(const Node& node) const {
        return operatorHash(node).add(hashOf(node.a)).add(hashOf(node.b)).value();
    }

    ChildHash& childHash_;
};

}  // namespace

template <class Policy>
std::size_t ExpressionHash<Policy>::operator()(const Expression& expression) const {
    struct Step {
        const Expression* tree;
        bool childrenAreHashed;
    };
    support::WalkStack<Step> steps{{&expression, false}};
    // The last step's children come off the stack in order, since they were hashed last to first.
    support::WalkStack<std::size_t> hashes;
    auto childHash = [&hashes](const Expression&) {
        const std::size_t hash = hashes.back();
        hashes.pop_back();
        return hash;
    };
    const NodeHash<Policy, decltype(childHash)> nodeHash(childHash);
    while (!steps.empty()) {
        const Step step = steps.back();
        if (step.childrenAreHashed) {
            steps.pop_back();
            hashes.push_back(boost::apply_visitor(nodeHash, *step.tree));
        } else {
            steps.back().childrenAreHashed = true;
            support::forEachChild<Policy>(*step.tree, [&](const Expression& child) {
                steps.push_back({&child, false});
            });
        }
    }
    return hashes.back();
}

template <class Policy>
template <class Node>
std::size_t ExpressionHash<Policy>::Visitor::operator()(const Node& node) const {
    ExpressionHash childHash;
    return NodeHash<Policy, ExpressionHash>(childHash)(node);
}

#define VORM_NODE_KIND(Kind)                                                                \
    template std::size_t ExpressionHash<Inclusive>::Visitor::operator()(const Kind&) const; \
    template std::size_t ExpressionHash<ModuloAliases>::Visitor::operator()(const Kind&) const;
#include <vorm/assessments/expression/node_kinds.def>

template class ExpressionHash<Inclusive>;
template class ExpressionHash<ModuloAliases>;

}  // namespace vorm::assessments
