#pragma once

#include <vorm/evaluation/recording/recording.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// What one column of a recording is like.
struct SignalSurvey {
    std::string file;
    std::string name;
    std::string type;         ///< as typeText gives it, `text` for more than 64 distinct texts,
                              ///< `mixed` where cells are of several kinds
    std::size_t samples = 0;  ///< cells with a value
    std::size_t empty = 0;
    std::size_t nans = 0;
    ExactTime first;  ///< time of the first sample
    ExactTime last;
    ExactTime medianDistance;  ///< of neighbouring samples, repeated times left out; or 0
    ExactTime longestDistance;
    ExactTime longestAt;    ///< where it begins
    std::size_t holes = 0;  ///< distances above maxGap, or above ten medians where none is given
    std::size_t equalTimes = 0;  ///< samples at the time of the one before them
    std::size_t timesBack = 0;   ///< samples before the one before them
};

/// Looks a recording over without refusing what readRecording refuses: repeated times, times that
/// go back and cells of several kinds are counted. Throws InputError for files that cannot be read,
/// have no header, no time column or times that are none.
std::vector<SignalSurvey> surveyRecording(const RecordingSource& source,
                                          const RecordingLayout& layout);

}  // namespace vorm::evaluation
