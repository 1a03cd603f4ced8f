#include "formula.hpp"
#include "parser.hpp"

#include <utility>

namespace vorm::evaluation {
namespace {

std::shared_ptr<const SyntaxNodes> nodesOf(const std::string& text) {
    try {
        return std::make_shared<const SyntaxNodes>(Parser(text).nodes());
    } catch (const FormulaError& error) {
        throw error.within(text);
    }
}

}  // namespace

ParsedFormula::ParsedFormula(std::string text) : text_(std::move(text)), nodes_(nodesOf(text_)) {}

std::set<std::string> ParsedFormula::names() const {
    std::set<std::string> names;
    for (const SyntaxNode& node : *nodes_) {
        if (node.kind == SyntaxKind::Name || node.kind == SyntaxKind::QuotedName) {
            names.insert(node.text);
        }
    }
    return names;
}

}  // namespace vorm::evaluation
