#pragma once

// For until: which times wait for which goal.

#include <vorm/evaluation/causes/time_set.hpp>

#include <vector>

namespace vorm::evaluation::detail {

/// What an until with the closed window [t + a, t + b] finds from the times t on.
struct UntilWaits {
    struct Wait {
        CountedSpan times;
        double goal;  ///< when it comes first; after t + a
    };

    UntilWaits(const TimeSet& times, const TimeSet& goal, double a, double b);

    TimeSet atOnce;  ///< the times whose goal is there when the window begins
    std::vector<Wait> waits;
    TimeSet missed;  ///< those that find no goal in the window

    /// When something is to hold from t up to just before the goal, and throughout [t, t + a]: of
    /// the times that miss it the latter only.
    TimeSet waitedThrough(double a) const;
};

}  // namespace vorm::evaluation::detail
