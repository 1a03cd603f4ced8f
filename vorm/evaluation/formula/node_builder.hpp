#pragma once

// Makes the nodes of a formula's tree. For the sources that build formulas.

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>
#include <vorm/evaluation/time/time_text.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// Makes the nodes that have operands.
class NodeBuilder {
public:
    /// The tree counts its times in ticks of that length.
    explicit NodeBuilder(ExactTime tick) : timeline_(tick), times_(tick) {}

    /// The tree of a node. Its operands are at the end of the list and are taken from it.
    assessments::Expression operatorOf(const SyntaxNode& node,
                                       std::vector<assessments::Expression>& operands);

    /// How the times of the nodes so far were written.
    const TimeTexts& times() const { return times_; }

private:
    double ticks(const WrittenTime& written);

    Timeline timeline_;
    TimeTexts times_;
};

/// The signal of that name.
assessments::Expression signalOf(const std::string& name);

/// A member of an enumeration that nothing is known of: its value tells it from other members.
assessments::Expression unknownMember(const std::string& member);

}  // namespace vorm::evaluation
