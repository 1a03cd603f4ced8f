#include "wanted_signals.hpp"

#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

constexpr ExactTime farthest = 1'000 * 86'400 * second;

ExactTime lengthOf(const WrittenTime& written) {
    if (written.isBeyondAll()) {
        return {};  // such a window ends at no time of its own
    }
    const ExactTime time = written.time.value_or(farthest);
    return std::min(std::max(time, -time), farthest);
}

}  // namespace

ExactTime reachOf(const ParsedFormula& formula) {
    std::vector<ExactTime> reaches;
    for (const SyntaxNode& node : formula.nodes()) {
        ExactTime below;
        if (operandsOf(node.kind) > 0) {
            below = reaches[node.left];
        }
        if (operandsOf(node.kind) > 1) {
            below = std::max(below, reaches[node.right]);
        }
        const ExactTime own = std::max(lengthOf(node.a), lengthOf(node.b));
        reaches.push_back(std::min(below + own, farthest));
    }
    return reaches.back();
}

std::set<std::string> namesToRead(const AssessmentFile& file,
                                  const std::vector<const Assessment*>& assessments) {
    std::set<std::string> names;
    std::vector<const ParsedFormula*> pending;
    for (const Assessment* assessment : assessments) {
        pending.push_back(&assessment->requirement.formula);
    }
    while (!pending.empty()) {
        const ParsedFormula& formula = *pending.back();
        pending.pop_back();
        for (const std::string& name : formula.names()) {
            const auto definition = file.definitions.find(name);
            if (names.insert(name).second && definition != file.definitions.end()) {
                pending.push_back(&definition->second.formula);
            }
        }
    }
    return names;
}

ExactTime reachOf(const AssessmentFile& file, const std::vector<const Assessment*>& assessments) {
    ExactTime reach;
    for (const Assessment* assessment : assessments) {
        reach = std::max(reach, reachOf(assessment->requirement.formula));
    }
    // None of them is part of another one twice on any way.
    for (const auto& [name, definition] : file.definitions) {
        reach = std::min(reach + reachOf(definition.formula), farthest);
    }
    return reach;
}

}  // namespace vorm::evaluation
