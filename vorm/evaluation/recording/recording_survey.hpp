#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vorm::evaluation {

/// What one column of a recording is like.
struct SignalSurvey {
    /// Integers where all numbers of the column are of one 64-bit type.
    using Number = std::variant<double, std::int64_t, std::uint64_t>;

    std::string file;
    std::string name;
    std::string type;         ///< as typeText gives it, `text` for more than 64 distinct texts,
                              ///< `mixed` where cells are of several kinds
    std::string unit;         ///< as the header says it, or the declaration; or empty
    std::size_t samples = 0;  ///< cells with a value
    std::size_t empty = 0;
    std::size_t nans = 0;
    std::size_t infinities = 0;
    std::optional<Number> least;  ///< of the finite numbers, as greatest; nothing without any
    /// Their mean, from a compensated sum of doubles; nothing where the sum is beyond the range of
    /// double.
    std::optional<double> mean;
    std::optional<Number> greatest;
    /// Its texts, each once, as they appear: the members of an enumeration. None of more than 64.
    std::vector<std::string> members;
    ExactTime first;  ///< time of the first sample
    ExactTime last;
    ExactTime medianDistance;  ///< of neighbouring samples, repeated times left out; or 0
    ExactTime longestDistance;
    ExactTime longestAt;    ///< where it begins
    std::size_t holes = 0;  ///< distances above maxGap, or above ten medians where none is given
    std::size_t equalTimes = 0;  ///< samples at the time of the one before them
    std::size_t timesBack = 0;   ///< samples before the one before them
};

/// How one file of a recording is written.
struct FileSurvey {
    std::string file;
    /// As far as that is not plain or declared: `the header is line 14`.
    std::vector<std::string> remarks;
    std::vector<std::string> warnings;  ///< what is left out
    TableLayout layout;          ///< with what was found in the place of what is not declared
    bool isUnitAssumed = false;  ///< of times: nothing says that they are in seconds
    std::optional<InputError> timeProblem;  ///< why it has no times: its rows are counted instead
};

struct RecordingSurvey {
    std::vector<SignalSurvey> signals;  ///< in the order of the files and their columns
    std::vector<FileSurvey> files;
    /// As that of Recording; nothing where rows of a file are counted.
    std::optional<WallClock> clock;

    /// From the first sample to the last one of all signals; nothing without any.
    std::optional<TimeSpan> span() const;
};

/// Those of several recordings, each with its name.
using RecordingSurveys = std::vector<std::pair<std::string, RecordingSurvey>>;

/// Looks a recording over without refusing what readRecording refuses: repeated times, times that
/// go back, cells of several kinds and files without times are counted. Throws InputError for files
/// that cannot be read, have no header, or times that are none. Linear in the bytes.
RecordingSurvey surveyRecording(const RecordingSource& source, const RecordingLayout& layout);

}  // namespace vorm::evaluation
