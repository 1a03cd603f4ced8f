#pragma once

// For the evaluator: slopes in a unit of time that people use, whatever the traces count in.

#include <vorm/assessments/facade/timed_trace.hpp>
#include <vorm/evaluation/time/timeline.hpp>

namespace vorm::evaluation {

/// The slope of a line per second of its timeline, as TimedTrace::Slope gives it per tick, and
/// throws. Each is rounded once.
assessments::TimedTrace slopePerSecond(const assessments::TimedTrace& line,
                                       const Timeline& timeline);

}  // namespace vorm::evaluation
