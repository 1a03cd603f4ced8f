#include "reach.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/node_meaning.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// How far a node looks from a time at its operands, which are truth.
class ReachOfNode : public boost::static_visitor<double> {
public:
    explicit ReachOfNode(double step) : step_(step) {}

    double operator()(const unary_op& node) const {
        const bool looksBeside = node.op == VORM_OP::Slope || node.op == VORM_OP::Changed ||
                                 roleOf(node.op) == NodeRole::Edge;
        return looksBeside ? support::infinity : 0;
    }
    double operator()(const timed_unary_op& node) const {
        return node.op == VORM_OP::Shift ? std::fabs(node.offset) + step_ : support::infinity;
    }
    double operator()(const timedwindow_unary_op& node) const {
        return std::max(std::fabs(node.a), std::fabs(node.b)) + step_;
    }
    double operator()(const timedwindow_binary_op&) const { return support::infinity; }
    template <class Node>
    double operator()(const Node&) const {
        return 0;
    }

private:
    double step_;
};

bool hasNumbersAsOperands(const Expression& formula) {
    const NodeRole role = roleOf(formula);
    return role == NodeRole::Term || role == NodeRole::Comparison;
}

}  // namespace

double reachOf(const Expression& formula, double step) {
    struct Part {
        const Expression* formula;
        bool isNumber;  // or may be one
    };
    // What a path from the root adds up to is at most what all nodes add up to.
    double reach = 0;
    support::WalkStack<Part> pending{{&formula, false}};
    while (!pending.empty()) {
        const Part part = pending.back();
        pending.pop_back();
        const double own = boost::apply_visitor(ReachOfNode(step), *part.formula);
        if (part.isNumber && own > 0) {
            return support::infinity;
        }
        reach += own;
        const bool areNumbers = part.isNumber || hasNumbersAsOperands(*part.formula);
        support::forEachChild<ModuloAliases>(*part.formula, [&](const Expression& child) {
            pending.push_back({&child, areNumbers});
        });
    }
    return reach;
}

}  // namespace vorm::evaluation
