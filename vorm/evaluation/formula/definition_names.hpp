#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// The names that people gave to parts of a formula by definitions.
class DefinitionNames {
public:
    /// Leaves out what is a signal or a literal alone: wherever that stands it would seem to be
    /// meant by the definition's name; and what has more than mostNodes nodes, since a copy of each
    /// tree is kept. Of several names for one tree the first counts.
    void add(const std::string& name, const assessments::Expression& tree);

    static constexpr std::size_t mostNodes = 1'000;

    bool empty() const { return names_.empty(); }

    /// Whether some definition has that many nodes, which is worth knowing before its tree is
    /// compared.
    bool hasOneOf(std::size_t nodes) const { return sizes_.contains(nodes); }

    /// The name of a tree, and its own tree; null where it has none.
    const std::pair<const assessments::Expression, std::string>* find(
        const assessments::Expression& tree) const {
        const auto found = names_.find(tree);
        return found == names_.end() ? nullptr : &*found;
    }

private:
    assessments::ExpressionMap<std::string, assessments::ModuloAliases> names_;
    std::set<std::size_t> sizes_;
};

/// A definition and its formula, as people read them.
struct DefinitionText {
    std::string name;
    std::string formula;

    friend bool operator==(const DefinitionText&, const DefinitionText&) = default;
};

/// A formula in which definitions stand by their names.
struct NamedFormula {
    std::string text;
    /// Those that stand in the text, and those that stand in their formulas, each once.
    std::vector<DefinitionText> definitions;
};

/// The text of a formula as formulaText has it, but for what has a name. The tree itself is
/// written by its name, too, unless `isItsDefinition`. Linear in the formula for each different
/// size of definitions.
NamedFormula namedFormula(const assessments::Expression& formula, const TimeTexts& times,
                          const DefinitionNames& names, bool isItsDefinition = false);

}  // namespace vorm::evaluation
