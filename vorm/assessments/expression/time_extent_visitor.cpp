#include "time_extent_visitor.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/operators/extremum.hpp>
#include <vorm/assessments/trace/time_step.hpp>

namespace vorm::assessments::detail {

struct EarliestStart {
    static constexpr double none = support::infinity;
    static double of(const TimedTrace& trace) { return trace.getStartTime(); }
    static double united(double a, double b) {
        return support::Extremum<support::KeepSmaller>()(a, b);
    }
};

struct LatestKnown {
    static constexpr double none = -support::infinity;
    static double of(const TimedTrace& trace) { return trace.getLastKnownTime(); }
    static double united(double a, double b) {
        return support::Extremum<support::KeepGreater>()(a, b);
    }
};

template <class End>
double TimeExtentVisitor<End>::operator()(const nilClass&) const {
    return End::none;
}

template <class End>
double TimeExtentVisitor<End>::operator()(const constantValue&) const {
    return End::none;
}

template <class End>
double TimeExtentVisitor<End>::operator()(const variable& node) const {
    return ofTrace(node);
}

template <class End>
double TimeExtentVisitor<End>::operator()(const unary_op& node) const {
    return ofTree(node.child);
}

template <class End>
double TimeExtentVisitor<End>::operator()(const binary_op& node) const {
    return End::united(ofTree(node.lhs), ofTree(node.rhs));
}

template <class End>
double TimeExtentVisitor<End>::operator()(const alias& node) const {
    return ofTree(node.body);
}

template <class End>
double TimeExtentVisitor<End>::ofTree(const Expression& tree) const {
    double extent = End::none;
    support::forEachNode(tree, [&](const Expression& node) {
        if (boost::get<variable>(&node) != nullptr) {
            extent = End::united(extent, ofTrace(node));
        }
    });
    return extent;
}

template <class End>
double TimeExtentVisitor<End>::ofTrace(const Expression& leaf) const {
    const auto trace = traces_.find(leaf);
    return trace == traces_.end() ? End::none : End::of(trace->second);
}

template class TimeExtentVisitor<EarliestStart>;
template class TimeExtentVisitor<LatestKnown>;

}  // namespace vorm::assessments::detail
