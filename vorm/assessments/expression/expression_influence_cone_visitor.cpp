#include "expression_influence_cone_visitor.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/time_step.hpp>

#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <limits>

namespace vorm::assessments {
namespace {

using support::infinity;

constexpr double oneStep = std::numeric_limits<double>::denorm_min();

double orElse(double number, double fallback) {
    return number == number ? number : fallback;
}

// Where nothing is known of an end (it is NaN), the span is open to that side.
InfluenceSpan spanOf(double lo, double hi) {
    return {orElse(lo, -infinity), orElse(hi, infinity)};
}

InfluenceSpan sum(const InfluenceSpan& a, const InfluenceSpan& b) {
    return spanOf(a.lo + b.lo, a.hi + b.hi);
}

InfluenceSpan hull(const InfluenceSpan& a, const InfluenceSpan& b) {
    return {std::min(a.lo, b.lo), std::max(a.hi, b.hi)};
}

// Visits the children of a node together with what the root looks at of each.
template <class Visit>
class SpansOfChildren : public boost::static_visitor<> {
public:
    SpansOfChildren(const InfluenceSpan& spanOfNode, Visit visit)
        : spanOfNode_(spanOfNode), visit_(visit) {}

    void operator()(const nilClass&) const {}
    void operator()(const constantValue&) const {}
    void operator()(const variable&) const {}
    void operator()(const unary_op& node) const {
        const bool looksBefore = node.op == VORM_OP::Changed ||
                                 support::familyOf(node.op) == support::OperatorFamily::Edge;
        look(node.child, {looksBefore ? -oneStep : 0, node.op == VORM_OP::Slope ? oneStep : 0});
    }
    void operator()(const binary_op& node) const {
        look(node.lhs, {0, 0});
        look(node.rhs, {0, 0});
    }
    void operator()(const timed_unary_op& node) const {
        if (node.op == VORM_OP::Shift) {
            look(node.child, spanOf(node.offset, node.offset));
        } else if (node.offset >= 0) {
            look(node.child, {-oneStep, 0});
        } else {
            look(node.child, {0, oneStep});
        }
    }
    void operator()(const timedwindow_unary_op& node) const {
        const support::Distances window = support::windowOf(node.op, node.a, node.b);
        look(node.child, spanOf(window.first, window.last));
    }
    void operator()(const timedwindow_binary_op& node) const {
        if (support::looksBack(node.op)) {
            look(node.lhs, {-infinity, 0});
            look(node.rhs, {-infinity, std::max(0.0, orElse(-node.a, infinity))});
        } else {
            look(node.lhs, {0, infinity});
            look(node.rhs, {std::min(0.0, orElse(node.a, -infinity)), infinity});
        }
    }
    void operator()(const alias& node) const { look(node.body, {0, 0}); }

private:
    void look(const Expression& child, const InfluenceSpan& offsets) const {
        visit_(child, sum(spanOfNode_, offsets));
    }

    InfluenceSpan spanOfNode_;
    Visit visit_;
};

}  // namespace

ExpressionInfluenceConeVisitor::Cone ExpressionInfluenceConeVisitor::getTree(
    const Expression& expression) const {
    struct Seen {
        const Expression* tree;
        InfluenceSpan span;
    };
    Cone cone;
    support::WalkStack<Seen> pending{{&expression, {0, 0}}};
    while (!pending.empty()) {
        const Seen seen = pending.back();
        pending.pop_back();
        InfluenceSpan& span = cone.try_emplace(*seen.tree, seen.span).first->second;
        span = hull(span, seen.span);
        const auto visitLater = [&pending](const Expression& child, const InfluenceSpan& offsets) {
            pending.push_back({&child, offsets});
        };
        boost::apply_visitor(SpansOfChildren<decltype(visitLater)>(seen.span, visitLater),
                             *seen.tree);
    }
    return cone;
}

}  // namespace vorm::assessments
