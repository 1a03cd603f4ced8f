#pragma once

// For the evaluator: traces that are prepared for an operation, without a copy of those that are
// fit for it as they are.

#include <vorm/assessments/facade/timed_trace.hpp>

#include <optional>

namespace vorm::evaluation {

/// A trace made from another one, or nothing where that one stays as it is.
using ChangedTrace = std::optional<assessments::TimedTrace>;

/// The trace after the change, if there is any.
inline const assessments::TimedTrace& changedOr(const ChangedTrace& changed,
                                                const assessments::TimedTrace& original) {
    return changed ? *changed : original;
}

}  // namespace vorm::evaluation
