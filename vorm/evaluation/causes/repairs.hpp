#pragma once

#include <vorm/evaluation/causes/judged_formula.hpp>

#include <vector>

namespace vorm::evaluation::detail {

/// Conditions whose opposite at the times named keeps a formula from being what it is.
struct Repair {
    ConditionTimes opposite;
    /// Whether the choice of a time stands behind it, or two needs of one condition were joined:
    /// then some of it may not be needed.
    bool mayHaveSpare = false;
};

struct Repairs {
    /// In order of preference, none with all the conditions of another and more; some may have the
    /// same conditions at other times. Empty where nothing helps.
    std::vector<Repair> ways;
    bool areAll = true;  ///< whether none were left out because there are too many
};

/// The ways to keep the formula from being certainly `value` at any of the times, as far as each
/// condition appears once only in what they change: with more of them a change can have effects
/// elsewhere in the formula. Preferred are of a disjunction that is false the last operand, of a
/// conjunction that is true the first; where something should come true within a window it is
/// looked at where the window ends. These are the minimal path sets of a fault tree, found from the
/// top down. (J. B. Fussell, W. E. Vesely, "A new methodology for obtaining cut sets for fault
/// trees", 1972.)
Repairs repairsOf(const JudgedFormula& formula, const TimeSet& times, bool value);

}  // namespace vorm::evaluation::detail
