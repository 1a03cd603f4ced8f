#pragma once

#include <vorm/evaluation/time/time_unit.hpp>

#include <map>
#include <string>

namespace vorm::evaluation {

/// A length of time as people write it, with the unit that makes it shortest: `100 ms`, `18 h`,
/// `1.5 s`, `0`.
std::string timeWithUnit(ExactTime length);

/// The texts of the times in a formula's tree.
class TimeTexts {
public:
    /// The tree counts its times in ticks of that length.
    explicit TimeTexts(ExactTime tick = second) : tick_(tick) {}

    /// Keeps how that number of ticks was written; the first way of several counts.
    void add(double ticks, const std::string& text) { written_.emplace(ticks, text); }

    /// As it was written, or else with the unit that makes it shortest.
    std::string of(double ticks) const;

private:
    ExactTime tick_;
    std::map<double, std::string> written_;
};

}  // namespace vorm::evaluation
