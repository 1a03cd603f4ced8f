#pragma once

#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <set>

namespace vorm::evaluation {

/// What formulas call the time of a recording, unless that has a signal of this name.
inline constexpr std::string_view timeName = "time";

/// The time in seconds as a line over a span. A number of seconds among `sharp` is reached at the
/// time that its shortest decimal means, rounded once to the timeline, 0.3 at three tenths; others
/// are as exact as doubles. Linear in `sharp`.
SharedPieces timeLine(const Timeline& timeline, const CountedSpan& span,
                      const std::set<double>& sharp = {});

/// That line as the signal of that name.
Signal timeSignal(const Timeline& timeline, const CountedSpan& span);

}  // namespace vorm::evaluation
