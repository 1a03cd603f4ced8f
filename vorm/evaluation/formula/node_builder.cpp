#include "node_builder.hpp"

#include "enumeration_literal.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_factory.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <array>
#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

using UnaryOperation = Expression (ExpressionFactory::*)(Expression&&) const;
using BinaryOperation = Expression (ExpressionFactory::*)(Expression&&, Expression&&) const;

template <class Operation>
struct Built {
    VORM_OP op;
    Operation operation;
};

constexpr std::array unaries = std::to_array<Built<UnaryOperation>>({
    {VORM_OP::Not, &ExpressionFactory::Not},
    {VORM_OP::UnaryMinus, &ExpressionFactory::UnaryMinus},
    {VORM_OP::Abs, &ExpressionFactory::Abs},
    {VORM_OP::Slope, &ExpressionFactory::Slope},
});

constexpr std::array binaries = std::to_array<Built<BinaryOperation>>({
    {VORM_OP::Plus, &ExpressionFactory::Plus},
    {VORM_OP::Minus, &ExpressionFactory::Minus},
    {VORM_OP::Multiply, &ExpressionFactory::Multiply},
    {VORM_OP::And, &ExpressionFactory::And},
    {VORM_OP::Or, &ExpressionFactory::Or},
    {VORM_OP::Eq, &ExpressionFactory::Eq},
    {VORM_OP::Neq, &ExpressionFactory::Neq},
    {VORM_OP::Lt, &ExpressionFactory::Lt},
    {VORM_OP::Leq, &ExpressionFactory::Leq},
    {VORM_OP::Gt, &ExpressionFactory::Gt},
    {VORM_OP::Geq, &ExpressionFactory::Geq},
});

using WindowOperation = Expression (ExpressionFactory::*)(double, double, Expression&&) const;
using UntilOperation = Expression (ExpressionFactory::*)(Expression&&, double, double,
                                                         Expression&&) const;

constexpr std::array windows = std::to_array<Built<WindowOperation>>({
    {VORM_OP::Globally, &ExpressionFactory::Globally},
    {VORM_OP::Eventually, &ExpressionFactory::Eventually},
    {VORM_OP::Historically, &ExpressionFactory::Historically},
    {VORM_OP::Once, &ExpressionFactory::Once},
});

constexpr std::array untils = std::to_array<Built<UntilOperation>>({
    {VORM_OP::Until, &ExpressionFactory::Until},
    {VORM_OP::Since, &ExpressionFactory::Since},
});

static_assert(support::coversAll(unaries, {support::OperatorFamily::Numeric,
                                           support::OperatorFamily::Negation}));
static_assert(support::coversAll(binaries, {support::OperatorFamily::Arithmetic,
                                            support::OperatorFamily::Comparison,
                                            support::OperatorFamily::Connective}));
static_assert(support::coversAll(windows, {support::OperatorFamily::Window}));
static_assert(support::coversAll(untils, {support::OperatorFamily::Until}));

template <class Operations, class... Operands>
Expression built(const Operations& operations, VORM_OP op, Operands&&... operands) {
    for (const auto& each : operations) {
        if (each.op == op) {
            return (ExpressionFactory().*each.operation)(std::move(operands)...);
        }
    }
    throw std::logic_error("no operator of so many operands");
}

// The time just before t is the one that EpsilonShift looks at.
Expression edgeOf(bool rising, Expression p) {
    const ExpressionFactory factory;
    Expression before = factory.EpsilonShift(1, p);
    Expression body = rising ? factory.And(Expression(p), factory.Not(std::move(before)))
                             : factory.And(factory.Not(p), std::move(before));
    return alias(std::move(body), rising ? "rise(" : "fall(", std::move(p), ")");
}

Expression crossingOf(bool rising, double distance, Expression x, Expression limit) {
    const ExpressionFactory factory;
    Expression later = factory.Shift(distance, x);
    Expression difference = rising ? factory.Minus(std::move(later), Expression(x))
                                   : factory.Minus(Expression(x), std::move(later));
    Expression body = factory.Gt(std::move(difference), Expression(limit));
    return alias(std::move(body), "(", std::move(x), rising ? " Rise [" : " Fall [", 0, distance,
                 "] ", std::move(limit), ")");
}

Expression castOf(std::size_t target, Expression x) {
    const auto flag =
        boost::mp11::mp_with_index<boost::mp11::mp_size<ValueTypes>::value>(target, [](auto index) {
            return cast_op::Target(cast_op::castFlag<boost::mp11::mp_at_c<ValueTypes, index>>());
        });
    return cast_op(std::move(x), flag);
}

Expression taken(std::vector<Expression>& operands) {
    Expression last = std::move(operands.back());
    operands.pop_back();
    return last;
}

}  // namespace

double NodeBuilder::ticks(const WrittenTime& written) {
    const double ticks = written.time ? timeline_.ticksIn(*written.time) : written.number;
    times_.add(ticks, written.text);
    return ticks;
}

Expression NodeBuilder::operatorOf(const SyntaxNode& node, std::vector<Expression>& operands) {
    const ExpressionFactory factory;
    Expression right = operandsOf(node.kind) == 2 ? taken(operands) : Expression();
    Expression left = taken(operands);
    switch (node.kind) {
        case SyntaxKind::Unary:
            return built(unaries, node.op, std::move(left));
        case SyntaxKind::Binary:
            return built(binaries, node.op, std::move(left), std::move(right));
        case SyntaxKind::Window: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return built(windows, node.op, a, b, std::move(left));
        }
        case SyntaxKind::Until: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return built(untils, node.op, std::move(left), a, b, std::move(right));
        }
        case SyntaxKind::Shifted:
            // Of an epsilon shift only the sign counts.
            return node.op == VORM_OP::Shift ? factory.Shift(ticks(node.a), std::move(left))
                                             : factory.EpsilonShift(node.a.number, std::move(left));
        case SyntaxKind::Cast:
            return castOf(node.target, std::move(left));
        case SyntaxKind::Edge:
            return edgeOf(node.rising, std::move(left));
        case SyntaxKind::Implication:
            return factory.Implies(std::move(left), std::move(right));
        case SyntaxKind::Crossing:
            return crossingOf(node.rising, ticks(node.a), std::move(left), std::move(right));
        case SyntaxKind::Number:
        case SyntaxKind::TypedLiteral:
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
        case SyntaxKind::Member:
            break;
    }
    throw std::logic_error("no operator");
}

Expression signalOf(const std::string& name) {
    return variable(name, signalId(name));
}

Expression unknownMember(const std::string& member) {
    return constantValue(enumerationTag(""), member, enumerationTag(member));
}

}  // namespace vorm::evaluation
