#pragma once

#include <limits>

namespace vorm::evaluation {

/// In the tree of a formula, the end of a window that reaches to the end of what was recorded of
/// the signals in its operands, or, of one that looks back, to its begin: greater than all times.
/// One of plus infinity reaches beyond, where nothing is known.
inline constexpr double toTheEnd = std::numeric_limits<double>::max();

}  // namespace vorm::evaluation
