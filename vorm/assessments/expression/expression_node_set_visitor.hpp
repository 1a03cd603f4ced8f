#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/variant/static_visitor.hpp>

namespace vorm::assessments {

/// The operators, leaves and aliases that occur in a formula.
///
/// The set tells which operators occur, not the whole nodes: a node with an offset or a window is
/// in it as a plain unary_op or binary_op with the same operands, a cast_op as itself. nilClass is
/// not in it. An alias and its body are one element, and the arguments are not looked at. Every
/// element is a copy: memory and time grow with the sum of the sizes of all sub-formulas.
class VORM_ASSESSMENTS_EXPORT ExpressionNodeSetVisitor : public boost::static_visitor<> {
public:
    using NodeSet = ExpressionSet<ModuloAliases>;

    /// The node set of a formula and whatever this visitor visited before; the visitor starts over.
    NodeSet getNodes(const Expression& expression);

    // Add a node and the nodes below it.
    void operator()(const nilClass&) {}
    void operator()(const constantValue& node);
    void operator()(const variable& node);
    void operator()(const unary_op& node);
    void operator()(const binary_op& node);
    void operator()(const cast_op& node);
    void operator()(const alias& node);

private:
    void addAll(const Expression& tree);

    NodeSet nodes_;
};

}  // namespace vorm::assessments
