#pragma once

// Which operands fit which operators. For typesOf.

#include <vorm/evaluation/formula/operand_types.hpp>

namespace vorm::evaluation {

/// Types one node after the other.
class TypeRules {
public:
    TypeRules(const ParsedFormula& formula, const NameTypes& names);

    std::vector<OperandType> types() &&;

private:
    OperandType typeOf(const SyntaxNode& node);
    OperandType unary(const SyntaxNode& node);
    OperandType cast(const SyntaxNode& node);
    OperandType binary(const SyntaxNode& node);
    OperandType arithmetic(const SyntaxNode& node);
    OperandType floating(const SyntaxNode& node);
    OperandType window(const SyntaxNode& node);
    OperandType comparison(const SyntaxNode& node);
    OperandType crossing(const SyntaxNode& node);
    OperandType logic(const SyntaxNode& node);
    OperandType name(const SyntaxNode& node);

    // type_requirements.cpp
    // The type that two operands share; an open one takes that of the other.
    SignalType shared(const SyntaxNode& node);
    void requireValue(std::size_t operand) const;
    void requireNumber(const SyntaxNode& node, std::size_t operand) const;
    void requireFloating(const SyntaxNode& node, std::size_t operand) const;
    void requireBool(const SyntaxNode& node, std::size_t operand) const;
    void requireTimes(const SyntaxNode& node) const;

    // interpolation_rules.cpp
    // What an operator makes of operands that are held or lines; refuses those of which it makes
    // neither.
    Interpolation interpolationOf(const SyntaxNode& node) const;
    void requireHeld(const SyntaxNode& node, std::size_t operand) const;
    void requireLine(const SyntaxNode& node, std::size_t operand) const;
    void requireNoCurve(const SyntaxNode& node) const;

    // enumeration_rules.cpp
    void resolveMember(std::size_t operand, std::size_t other);
    void requireUnambiguous(std::size_t operand, std::size_t other) const;
    [[noreturn]] void refuseMember(std::size_t operand, const OperandType& other) const;

    // type_errors.cpp
    [[noreturn]] void refuseName(const SyntaxNode& node) const;
    [[noreturn]] void refuseClash(const SyntaxNode& node) const;
    [[noreturn]] void refuseOperand(const SyntaxNode& node, std::size_t operand,
                                    const std::string& wanted, std::string advice) const;
    std::string operatorText(const SyntaxNode& node) const;
    std::string described(std::size_t operand) const;
    std::string textOf(std::size_t operand) const;
    std::string asDouble(std::size_t operand) const;

    const ParsedFormula& formula_;
    const SyntaxNodes& nodes_;
    const NameTypes& names_;
    std::vector<OperandType> types_;
};

/// Whether a type is known to have no arithmetic.
bool isNoNumber(const SignalType& type);

}  // namespace vorm::evaluation
