#include "enumeration_literal.hpp"
#include "type_rules.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

namespace vorm::evaluation {
namespace {

std::string membersOf(const Enumeration& enumeration, const std::string& wrong) {
    const std::string near = suggestion(wrong, enumeration.members);
    if (!near.empty()) {
        return near;
    }
    const std::string members = quotedList(enumeration.members);
    return enumeration.isGathered ? "the recording has " + members +
                                        "; what can be there besides is declared in [enumerations]"
                                  : "its members are " + members;
}

}  // namespace

void TypeRules::resolveMember(std::size_t operand, std::size_t other) {
    requireUnambiguous(operand, other);
    OperandType& member = types_[operand];
    const OperandType& compared = types_[other];
    if (!member.isMember || member.type.isEnumerated()) {
        return;
    }
    const bool isOfUnknown = !compared.type.isKnown() && !compared.isOpen && !compared.isMember;
    if (isOfUnknown) {
        return;
    }
    const auto& enumeration = compared.type.enumeration;
    if (!enumeration) {
        refuseMember(operand, compared);
    }
    const std::string& text = nodes_[operand].text;
    if (!enumeration->valueOf(text)) {
        throw FormulaError("'" + text + "' is no member of " + typeText(compared.type),
                           nodes_[operand].where, membersOf(*enumeration, text));
    }
    member.type = compared.type;
}

// A quoted name that is a signal could mean a member as well.
void TypeRules::requireUnambiguous(std::size_t operand, std::size_t other) const {
    const SyntaxNode& node = nodes_[operand];
    const auto& enumeration = types_[other].type.enumeration;
    if (node.kind == SyntaxKind::QuotedName && !types_[operand].isMember && enumeration &&
        enumeration->valueOf(node.text)) {
        throw FormulaError("\"" + node.text + "\" is a signal and also a member of " +
                               typeText(types_[other].type),
                           node.where, "write '" + node.text + "' for the member");
    }
}

void TypeRules::refuseMember(std::size_t operand, const OperandType& other) const {
    const SyntaxNode& node = nodes_[operand];
    if (node.kind == SyntaxKind::QuotedName) {
        refuseName(node);
    }
    const std::string compared = other.isOpen           ? "a number"
                                 : other.type.isKnown() ? typeText(other.type)
                                                        : "";
    throw FormulaError("'" + node.text + "' is a member of an enumeration" +
                           (compared.empty() ? "" : ", but " + compared + " is none"),
                       node.where, "members are compared with signals of their enumeration");
}

}  // namespace vorm::evaluation
