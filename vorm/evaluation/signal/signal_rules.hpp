#pragma once

#include <vorm/assessments/trace/interpolation.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <limits>
#include <optional>
#include <string>

namespace vorm::evaluation {

/// What to do with a sample at the time of the one before it.
enum class EqualTimes { Refuse, First, Last };

/// What holds for the samples of one signal, whatever its type.
struct SignalRules {
    std::string subject;             ///< whose samples these are, for messages: `column 'v'`
    std::optional<SignalType> type;  ///< nothing: that of the first value
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    /// A default gives way where the type does not interpolate.
    bool isInterpolationDeclared = false;
    double maxGap = std::numeric_limits<double>::infinity();  ///< ticks of the timeline
    EqualTimes equalTimes = EqualTimes::Refuse;
    bool alsoHeld = false;  ///< whether the samples of a line are asked for, too
    SourceLocation where;   ///< of the declaration
    Timeline timeline;      ///< of the samples' times
};

/// What the rules say, or held where they leave it to a type that has no lines. Throws InputError
/// where lines are declared for such a type.
assessments::INTERPOLATION_METHOD interpolationOf(const SignalRules& rules, bool hasLines,
                                                  const std::string& typeName);

}  // namespace vorm::evaluation
