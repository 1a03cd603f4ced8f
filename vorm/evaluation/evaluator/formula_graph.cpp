#include "formula_graph.hpp"

#include <vorm/evaluation/evaluator/node_meaning.hpp>
#include <vorm/evaluation/evaluator/robustness.hpp>
#include <vorm/evaluation/evaluator/sub_formulas.hpp>

#include <optional>

namespace vorm::evaluation {
namespace {

constexpr std::size_t meaningCount = 3;

// A sub-formula under a meaning as one number. That of every operand is less: children have lower
// numbers, and a term's robustness is made from its boolean meaning.
std::size_t meaningNumber(std::size_t subFormula, Meaning meaning) {
    return meaningCount * subFormula + static_cast<std::size_t>(meaning);
}

// The best there is of a negation is the worst there is of its operand.
Meaning opposite(Meaning robustness) {
    return robustness == Meaning::LeastRobustness ? Meaning::GreatestRobustness
                                                  : Meaning::LeastRobustness;
}

// Under which meaning an operand of a node is read.
Meaning operandMeaning(NodeRole role, Meaning meaning, std::size_t operand) {
    if (!isRobustness(meaning) || role == NodeRole::Comparison || role == NodeRole::Term) {
        return Meaning::Boolean;
    }
    const bool isNegated =
        role == NodeRole::Negation || (role == NodeRole::Implication && operand == 0);
    return isNegated ? opposite(meaning) : meaning;
}

class GraphBuilder {
public:
    explicit GraphBuilder(const std::vector<EvaluationRequest>& requests) {
        for (const EvaluationRequest& request : requests) {
            roots_.push_back(
                meaningNumber(subFormulas_.numberOf(*request.formula), request.meaning));
        }
        needed_.assign(meaningCount * subFormulas_.all().size(), false);
        for (const std::size_t root : roots_) {
            needed_[root] = true;
        }
        for (std::size_t number = needed_.size(); number-- > 0;) {
            markOperands(number);
        }
    }

    void build(FormulaGraph& graph) const {
        std::vector<std::size_t> places(needed_.size());
        for (std::size_t number = 0; number < needed_.size(); ++number) {
            if (!needed_[number]) {
                continue;
            }
            const std::size_t place = places[number] = graph.vertices.size();
            FormulaVertex vertex = vertexOf(number);
            for (std::size_t i = 0; i < vertex.operandCount; ++i) {
                vertex.operands[i] = places[vertex.operands[i]];
                graph.vertices[vertex.operands[i]].users.push_back(place);
            }
            graph.vertices.push_back(std::move(vertex));
        }
        for (const std::size_t root : roots_) {
            graph.roots.push_back(places[root]);
        }
    }

private:
    void markOperands(std::size_t number) {
        if (!needed_[number]) {
            return;
        }
        const FormulaVertex vertex = vertexOf(number);
        for (const std::size_t operand : vertex.operandVertices()) {
            needed_[operand] = true;
        }
    }

    // The vertex of a number, with such numbers for its operands.
    FormulaVertex vertexOf(std::size_t number) const {
        const std::size_t subFormula = number / meaningCount;
        const SubFormula& sub = subFormulas_.all()[subFormula];
        const auto meaning = static_cast<Meaning>(number % meaningCount);
        const NodeRole role = roleOf(*sub.formula);
        FormulaVertex vertex{sub.formula, meaning, {}, sub.childCount, {}};
        if (isRobustness(meaning) && role == NodeRole::Term) {
            vertex.operands = {meaningNumber(subFormula, Meaning::Boolean)};
            vertex.operandCount = 1;
            return vertex;
        }
        for (std::size_t i = 0; i < sub.childCount; ++i) {
            vertex.operands[i] = meaningNumber(sub.children[i], operandMeaning(role, meaning, i));
        }
        if (isRobustness(meaning) && role == NodeRole::Edge) {
            vertex.operands[vertex.operandCount++] =
                meaningNumber(sub.children[0], opposite(meaning));
        }
        if (isRobustness(meaning) && (role == NodeRole::Instant || role == NodeRole::Edge)) {
            // Where anything begins to be known, only truth tells.
            vertex.operands[vertex.operandCount++] =
                meaningNumber(sub.children[0], Meaning::Boolean);
        }
        return vertex;
    }

    SubFormulas subFormulas_;
    std::vector<std::size_t> roots_;
    std::vector<bool> needed_;
};

}  // namespace

FormulaGraph::FormulaGraph(const std::vector<EvaluationRequest>& requests) {
    GraphBuilder(requests).build(*this);
}

}  // namespace vorm::evaluation
