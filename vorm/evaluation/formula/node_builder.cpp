#include "node_builder.hpp"

#include "enumeration_literal.hpp"
#include "spellings.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_factory.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

Expression crossingOf(bool rising, double distance, Expression x, Expression limit) {
    const ExpressionFactory factory;
    Expression later = factory.Shift(distance, x);
    Expression difference = rising ? factory.Minus(std::move(later), Expression(x))
                                   : factory.Minus(Expression(x), std::move(later));
    Expression body = factory.Gt(std::move(difference), Expression(limit));
    return alias(std::move(body), "(", std::move(x), rising ? " Rise [" : " Fall [", 0, distance,
                 "] ", std::move(limit), ")");
}

// An operator between its operands, or written like a function of them.
std::string_view wordOf(VORM_OP op) {
    return isCall(op) ? prefixWord(op) : infixWord(op);
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
            return unary_op(node.op, std::move(left), std::string(prefixWord(node.op)));
        case SyntaxKind::Binary:
            return binary_op(node.op, std::move(left), std::move(right),
                             std::string(wordOf(node.op)));
        case SyntaxKind::Window: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return timedwindow_unary_op(node.op, std::move(left), std::string(prefixWord(node.op)),
                                        a, b);
        }
        case SyntaxKind::Until: {
            const double a = ticks(node.a);
            const double b = ticks(node.b);
            return timedwindow_binary_op(node.op, std::move(left), std::move(right),
                                         std::string(infixWord(node.op)), a, b);
        }
        case SyntaxKind::Shifted:
            // Of an epsilon shift only the sign counts.
            return node.op == VORM_OP::Shift ? factory.Shift(ticks(node.a), std::move(left))
                                             : factory.EpsilonShift(node.a.number, std::move(left));
        case SyntaxKind::Cast:
            return castOf(node.target, std::move(left));
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
