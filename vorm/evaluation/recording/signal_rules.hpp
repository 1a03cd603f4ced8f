#pragma once

// What holds for the samples of one signal, whatever its type.

#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <limits>
#include <string>

namespace vorm::evaluation {

struct SignalRules {
    std::string column;              ///< for messages
    std::optional<SignalType> type;  ///< nothing: that of the first value
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    /// A default gives way where the type does not interpolate.
    bool isInterpolationDeclared = false;
    double maxGap = std::numeric_limits<double>::infinity();  ///< ticks of the timeline
    EqualTimes equalTimes = EqualTimes::Refuse;
    SourceLocation where;  ///< of the declaration
    Timeline timeline;     ///< of the samples' times
};

/// The rules for a column: those of its declaration, or of the layout where it has none (null).
SignalRules rulesFor(const std::string& column, const SignalLayout* declaration,
                     const RecordingLayout& layout, const Timeline& timeline);

}  // namespace vorm::evaluation
