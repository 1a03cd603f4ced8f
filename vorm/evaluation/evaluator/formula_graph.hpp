#pragma once

// For the evaluator: several formulas as one graph without repetitions. Trees repeat what they
// share; numbering each distinct sub-formula once keeps evaluation linear in the trees.

#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace vorm::evaluation {

/// One sub-formula under one meaning.
struct FormulaVertex {
    const assessments::Expression* formula;  ///< the first of those that are the same
    Meaning meaning;
    std::array<std::size_t, 3> operands{};  ///< vertices before this one
    std::size_t operandCount = 0;
    std::vector<std::size_t> users;  ///< vertices after this one, each once for each operand it is

    std::span<const std::size_t> operandVertices() const { return {operands.data(), operandCount}; }
};

/// What several requests need, each distinct sub-formula (under ModuloAliases) once for each
/// meaning, operands before their users and otherwise depth first. It points into the formulas.
struct FormulaGraph {
    /// Linear in the trees; does not recurse.
    explicit FormulaGraph(const std::vector<EvaluationRequest>& requests);

    std::vector<FormulaVertex> vertices;
    std::vector<std::size_t> roots;  ///< the vertex of each request
};

}  // namespace vorm::evaluation
