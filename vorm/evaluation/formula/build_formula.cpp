#include "definitions.hpp"
#include "enumeration_literal.hpp"
#include "formula.hpp"
#include "literal.hpp"
#include "node_builder.hpp"
#include "spellings.hpp"

#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::Expression;

class FormulaBuilder {
public:
    explicit FormulaBuilder(const FormulaNames& names) : definitions_(names), nodes_(names.tick) {}

    Formula build(const ParsedFormula& formula);

private:
    // A formula whose types are known, except for those that `wanted` decides.
    Expression build(const ParsedFormula& formula, std::vector<OperandType> types,
                     const SignalType& wanted);
    Expression leaf(const ParsedFormula& formula, const std::vector<OperandType>& types,
                    std::size_t index);
    Expression name(const SyntaxNode& node, const OperandType& type);

    Definitions definitions_;
    NodeBuilder nodes_;
    std::set<std::string> signals_;
    DefinitionNames names_;
};

SignalType orDouble(const OperandType& type) {
    return type.isOpen ? SignalType::of<double>() : type.type;
}

Expression memberOf(const SyntaxNode& node, const OperandType& type) {
    if (!type.type.isEnumerated()) {
        return unknownMember(node.text);
    }
    const Enumeration& enumeration = *type.type.enumeration;
    return assessments::constantValue(enumerationTag(enumeration.name), node.text,
                                      *enumeration.valueOf(node.text), enumeration.name);
}

// How to compare a literal with a value whose type does not have it.
std::string conversionFor(const ParsedFormula& formula, std::size_t literal,
                          const std::vector<OperandType>& types) {
    const SyntaxNodes& nodes = formula.nodes();
    if (!types[literal].settledBy || types[literal].type.is<double>()) {
        return "";
    }
    const SyntaxNode& node = nodes[*types[literal].settledBy];
    if (node.kind != SyntaxKind::Binary || isCall(node.op)) {
        return "";
    }
    const std::string sign = formula.text().substr(node.sign.begin, node.sign.length);
    const std::string left = excerptOf(formula, nodes[node.left].where);
    const std::string right = excerptOf(formula, nodes[node.right].where);
    return types[node.left].isOpen ? "write " + left + " " + sign + " double(" + right + ")"
                                   : "write double(" + left + ") " + sign + " " + right;
}

Expression openLiteral(const ParsedFormula& formula, std::size_t index,
                       const std::vector<OperandType>& types) {
    try {
        return literalOf(formula.nodes()[index], *types[index].type.valueType);
    } catch (const FormulaError& error) {
        throw FormulaError(error.problem().message, error.span(),
                           conversionFor(formula, index, types));
    }
}

Formula FormulaBuilder::build(const ParsedFormula& formula) {
    definitions_.sizeOf(formula);
    std::vector<OperandType> types = definitions_.typesOf(formula);
    const SignalType type = orDouble(types.back());
    Expression tree = build(formula, std::move(types), type);
    return {std::move(tree), type, std::move(signals_), nodes_.times(), std::move(names_)};
}

Expression FormulaBuilder::build(const ParsedFormula& formula, std::vector<OperandType> types,
                                 const SignalType& wanted) {
    const SyntaxNodes& nodes = formula.nodes();
    settle(nodes, wanted, types);
    std::vector<Expression> trees;
    // Growth would copy the trees.
    trees.reserve(nodes.size());
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        trees.push_back(operandsOf(nodes[index].kind) == 0
                            ? leaf(formula, types, index)
                            : nodes_.operatorOf(nodes[index], trees));
    }
    return std::move(trees.back());
}

Expression FormulaBuilder::leaf(const ParsedFormula& formula, const std::vector<OperandType>& types,
                                std::size_t index) {
    const SyntaxNode& node = formula.nodes()[index];
    if (types[index].isMember) {
        return memberOf(node, types[index]);
    }
    if (node.kind == SyntaxKind::Number) {
        return openLiteral(formula, index, types);
    }
    return node.kind == SyntaxKind::TypedLiteral ? literalOf(node, node.target)
                                                 : name(node, types[index]);
}

Expression FormulaBuilder::name(const SyntaxNode& node, const OperandType& type) {
    if (const ParsedFormula* definition = definitions_.find(node.text)) {
        Expression tree = withinDefinition(node.text, [&] {
            return build(*definition, definitions_.typesOf(node.text), type.type);
        });
        names_.add(node.text, tree);
        return tree;
    }
    signals_.insert(node.text);
    return signalOf(node.text);
}

}  // namespace

Formula buildFormula(const ParsedFormula& formula, const FormulaNames& names) {
    try {
        return FormulaBuilder(names).build(formula);
    } catch (const FormulaError& error) {
        const auto definition = names.definitions.find(error.definition());
        const bool isOwn = definition == names.definitions.end();
        throw isOwn ? formula.placed(error) : definition->second.placed(error);
    }
}

}  // namespace vorm::evaluation
