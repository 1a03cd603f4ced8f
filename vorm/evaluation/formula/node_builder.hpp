#pragma once

// Makes the nodes of a formula's tree. For the sources that build formulas.

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// The tree of a node that has operands, which are at the end of the list and are taken from it.
assessments::Expression operatorOf(const SyntaxNode& node,
                                   std::vector<assessments::Expression>& operands);

/// The signal of that name.
assessments::Expression signalOf(const std::string& name);

/// A member of an enumeration that nothing is known of: its value tells it from other members.
assessments::Expression unknownMember(const std::string& member);

}  // namespace vorm::evaluation
