#include "formula.hpp"
#include "parser.hpp"

#include <utility>

namespace vorm::evaluation {

ParsedFormula::ParsedFormula(std::string text)
    : text_(std::move(text)), nodes_(std::make_shared<const SyntaxNodes>(Parser(text_).nodes())) {}

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
