#pragma once

#include <vorm/evaluation/causes/judged_formula.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <functional>
#include <string>
#include <vector>

namespace vorm::evaluation::detail {

/// Where a signal is not known: from its last known time before to its first one after. Minus
/// infinity before its begin, plus infinity after its end, both where it has no samples.
struct Gap {
    std::string signal;
    double from;
    double to;

    friend bool operator==(const Gap&, const Gap&) = default;
};

/// The pieces of a signal.
using PiecesOf = std::function<const TracePieces&(const assessments::variable&)>;

/// The gaps for which the formula is open at the times at which it is: those that its operators
/// look into there, as far as what is known does not make them look no further. In the order of
/// the conditions, each gap once. Linear in what the formula looks at.
std::vector<Gap> gapsBehind(const JudgedFormula& formula, const TimeSet& times,
                            const PiecesOf& piecesOf);

}  // namespace vorm::evaluation::detail
