#pragma once

namespace vorm::evaluation {

/// How much of a failing interval its causes account for.
enum class CauseExtent {
    Whole,      ///< all of it
    Beginning,  ///< its first time: no change of the conditions that was found makes all of it pass
    Part,       ///< they belong to it, but their opposite alone does not make it pass
};

}  // namespace vorm::evaluation
