#pragma once

// For the evaluator: the order in which the vertices of a formula graph are computed.

#include <vorm/evaluation/evaluator/formula_graph.hpp>

#include <cstddef>
#include <functional>

namespace vorm::evaluation {

/// What is done with a vertex; called from any of the threads, for each vertex once.
struct VertexWork {
    std::function<void(std::size_t)> compute;  ///< its operands are computed; must not throw
    std::function<void(std::size_t)> release;  ///< nothing needs its result any more
};

/// Computes every vertex after its operands, those first that come first in the graph, so that few
/// results live at once. One job runs in the calling thread; several are threads of their own,
/// while the calling thread waits and reports the progress.
void runSchedule(const FormulaGraph& graph, const EvaluationOptions& options,
                 const VertexWork& work);

}  // namespace vorm::evaluation
