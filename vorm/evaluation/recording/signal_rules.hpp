#pragma once

// What holds for the samples of one signal, whatever its type.

#include <vorm/evaluation/recording/recording_layout.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace vorm::evaluation {

struct SignalRules {
    std::string column;              ///< for messages
    std::optional<SignalType> type;  ///< nothing: that of the first value
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    /// A default gives way where the type does not interpolate.
    bool isInterpolationDeclared = false;
    double maxGap = std::numeric_limits<double>::infinity();  ///< seconds
    EqualTimes equalTimes = EqualTimes::Refuse;
    SourceLocation where;  ///< of the declaration
};

/// Whether two neighbouring samples are further apart than maxGap, and by more than their times may
/// have been rounded: a step of 0.1 s is nowhere longer than 0.1 s.
inline bool isHole(double from, double to, double maxGap) {
    const double excess = to - from - maxGap;
    return excess > 0 && excess > 4 * std::numeric_limits<double>::epsilon() *
                                      std::max(std::abs(from), std::abs(to));
}

/// The rules for a column: those of its declaration, or of the layout where it has none (null).
SignalRules rulesFor(const std::string& column, const SignalLayout* declaration,
                     const RecordingLayout& layout);

}  // namespace vorm::evaluation
