#pragma once

// Definitions: their sizes and types, each worked out once however often its name stands somewhere.
// For buildFormula.

#include <vorm/evaluation/formula/operand_types.hpp>
#include <vorm/evaluation/formula/tree_size.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vorm::evaluation {

/// Runs an action on the text of a definition, so that its failures say where they are.
template <class Action>
auto withinDefinition(const std::string& name, Action action) {
    try {
        return action();
    } catch (const FormulaError& error) {
        if (!error.definition().empty()) {
            throw;
        }
        const InputProblem& problem = error.problem();
        throw FormulaError(problem.message, error.span(), problem.advice, name);
    }
}

class Definitions {
public:
    /// The names have to outlive the object.
    explicit Definitions(const FormulaNames& names) : names_(names) {}

    /// The definition of that name, or null.
    const ParsedFormula* find(const std::string& name) const;

    /// Throws FormulaError as sizeOf does, and where definitions go in a circle.
    TreeSize sizeOf(const ParsedFormula& formula);

    /// The types of a formula that sizeOf accepted.
    std::vector<OperandType> typesOf(const ParsedFormula& formula);

    /// The types of the definition of that name.
    const std::vector<OperandType>& typesOf(const std::string& name);

private:
    TreeSize sizeOfName(const SyntaxNode& node);
    void requireNoCircle(const SyntaxNode& node) const;
    std::optional<OperandType> typeOfName(const std::string& name);
    Interpolation interpolationOf(const std::string& name, const SignalType& type) const;
    /// For a name that is no signal but a member of a signal's enumeration.
    std::optional<std::string> memberAdvice(const std::string& name) const;
    std::string suggestionFor(const std::string& name) const;

    const FormulaNames& names_;
    std::vector<std::string> path_;
    std::map<std::string, TreeSize> sizes_;
    std::map<std::string, std::vector<OperandType>> types_;
};

}  // namespace vorm::evaluation
