#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/variant/static_visitor.hpp>

namespace vorm::assessments::detail {

/// Which end of a trace is asked for, and of which of several traces.
struct VORM_ASSESSMENTS_EXPORT EarliestStart;
struct VORM_ASSESSMENTS_EXPORT LatestKnown;

/// One end of the united time extents of a formula's signals. The public visitors name it.
template <class End>
class VORM_ASSESSMENTS_EXPORT TimeExtentVisitor : public boost::static_visitor<double> {
public:
    explicit TimeExtentVisitor(const ExpressionTraces& traces) : traces_(traces) {}

    double operator()(const nilClass&) const;
    double operator()(const constantValue&) const;
    double operator()(const variable& node) const;
    double operator()(const unary_op& node) const;
    double operator()(const binary_op& node) const;
    double operator()(const alias& node) const;

protected:
    double ofTree(const Expression& tree) const;
    double ofTrace(const Expression& leaf) const;

private:
    const ExpressionTraces& traces_;
};

extern template class TimeExtentVisitor<EarliestStart>;
extern template class TimeExtentVisitor<LatestKnown>;

}  // namespace vorm::assessments::detail
