#include "node_builder.hpp"

#include "enumeration_literal.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_factory.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

Expression unaryOf(VORM_OP op, Expression x) {
    const ExpressionFactory factory;
    switch (op) {
        case VORM_OP::Not:
            return factory.Not(std::move(x));
        case VORM_OP::UnaryMinus:
            return factory.UnaryMinus(std::move(x));
        case VORM_OP::Abs:
            return factory.Abs(std::move(x));
        case VORM_OP::Slope:
            return factory.Slope(std::move(x));
        case VORM_OP::None:
        case VORM_OP::Cast:
        case VORM_OP::Plus:
        case VORM_OP::Minus:
        case VORM_OP::Multiply:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
        case VORM_OP::Eq:
        case VORM_OP::Neq:
        case VORM_OP::Lt:
        case VORM_OP::Leq:
        case VORM_OP::Gt:
        case VORM_OP::Geq:
        case VORM_OP::And:
        case VORM_OP::Or:
        case VORM_OP::Eventually:
        case VORM_OP::Globally:
        case VORM_OP::Until:
        case VORM_OP::Shift:
        case VORM_OP::EpsilonShift:
            break;
    }
    throw std::logic_error("no operator of one operand");
}

Expression binaryOf(VORM_OP op, Expression left, Expression right) {
    const ExpressionFactory factory;
    switch (op) {
        case VORM_OP::Plus:
            return factory.Plus(std::move(left), std::move(right));
        case VORM_OP::Minus:
            return factory.Minus(std::move(left), std::move(right));
        case VORM_OP::Multiply:
            return factory.Multiply(std::move(left), std::move(right));
        case VORM_OP::And:
            return factory.And(std::move(left), std::move(right));
        case VORM_OP::Or:
            return factory.Or(std::move(left), std::move(right));
        case VORM_OP::Eq:
            return factory.Eq(std::move(left), std::move(right));
        case VORM_OP::Neq:
            return factory.Neq(std::move(left), std::move(right));
        case VORM_OP::Lt:
            return factory.Lt(std::move(left), std::move(right));
        case VORM_OP::Leq:
            return factory.Leq(std::move(left), std::move(right));
        case VORM_OP::Gt:
            return factory.Gt(std::move(left), std::move(right));
        case VORM_OP::Geq:
            return factory.Geq(std::move(left), std::move(right));
        case VORM_OP::None:
        case VORM_OP::Cast:
        case VORM_OP::UnaryMinus:
        case VORM_OP::Abs:
        case VORM_OP::Slope:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
        case VORM_OP::Not:
        case VORM_OP::Eventually:
        case VORM_OP::Globally:
        case VORM_OP::Until:
        case VORM_OP::Shift:
        case VORM_OP::EpsilonShift:
            break;
    }
    throw std::logic_error("no operator of two operands");
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

Expression NodeBuilder::oneOperand(const SyntaxNode& node, Expression x) {
    const ExpressionFactory factory;
    switch (node.kind) {
        case SyntaxKind::Window: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return node.op == VORM_OP::Globally ? factory.Globally(a, b, std::move(x))
                                                : factory.Eventually(a, b, std::move(x));
        }
        case SyntaxKind::Shifted:
            // Of an epsilon shift only the sign counts.
            return node.op == VORM_OP::Shift ? factory.Shift(ticks(node.a), std::move(x))
                                             : factory.EpsilonShift(node.a.number, std::move(x));
        case SyntaxKind::Cast:
            return castOf(node.target, std::move(x));
        case SyntaxKind::Edge:
            return edgeOf(node.rising, std::move(x));
        case SyntaxKind::Unary:
            return unaryOf(node.op, std::move(x));
        case SyntaxKind::Number:
        case SyntaxKind::TypedLiteral:
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
        case SyntaxKind::Member:
        case SyntaxKind::Binary:
        case SyntaxKind::Until:
        case SyntaxKind::Implication:
        case SyntaxKind::Crossing:
            break;
    }
    throw std::logic_error("no operator of one operand");
}

Expression NodeBuilder::twoOperands(const SyntaxNode& node, Expression left, Expression right) {
    const ExpressionFactory factory;
    switch (node.kind) {
        case SyntaxKind::Until: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return factory.Until(std::move(left), a, b, std::move(right));
        }
        case SyntaxKind::Implication:
            return factory.Implies(std::move(left), std::move(right));
        case SyntaxKind::Crossing:
            return crossingOf(node.rising, ticks(node.a), std::move(left), std::move(right));
        case SyntaxKind::Binary:
            return binaryOf(node.op, std::move(left), std::move(right));
        case SyntaxKind::Number:
        case SyntaxKind::TypedLiteral:
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
        case SyntaxKind::Member:
        case SyntaxKind::Unary:
        case SyntaxKind::Window:
        case SyntaxKind::Shifted:
        case SyntaxKind::Cast:
        case SyntaxKind::Edge:
            break;
    }
    throw std::logic_error("no operator of two operands");
}

Expression NodeBuilder::operatorOf(const SyntaxNode& node, std::vector<Expression>& operands) {
    Expression last = taken(operands);
    return operandsOf(node.kind) == 1 ? oneOperand(node, std::move(last))
                                      : twoOperands(node, taken(operands), std::move(last));
}

Expression signalOf(const std::string& name) {
    return variable(name, signalId(name));
}

Expression unknownMember(const std::string& member) {
    return constantValue(enumerationTag(""), member, enumerationTag(member));
}

}  // namespace vorm::evaluation
