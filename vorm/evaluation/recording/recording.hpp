#pragma once

#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/source/recording_source.hpp>
#include <vorm/evaluation/time/timeline.hpp>
#include <vorm/evaluation/time/wall_clock.hpp>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// The signals of a recording.
struct Recording {
    std::string name;
    Timeline timeline;  ///< of the signals' times
    /// Of a recording whose times are all dates; nothing where time 0 of some file is another one.
    std::optional<WallClock> clock;
    std::vector<Signal> signals;              ///< in the order of the files and their columns
    std::vector<std::string> availableNames;  ///< also of signals that were not asked for
    /// The time as formulas read it, over all rows of the files that were read; nothing where there
    /// are none, and where a signal has its name.
    std::optional<Signal> time;
    /// Why files of a folder were left out: a signal that is nowhere else may be in one of them.
    std::vector<InputError> leftOut;
    /// How each file that was read is written, as far as that is not plain or declared:
    /// `drive.csv: the header is line 14`.
    std::vector<std::string> remarks;
    std::vector<std::string> warnings;  ///< what was left out or changed in reading

    /// The signal of that name, or the time, or null.
    const Signal* find(std::string_view name) const;
};

struct ReadingOptions {
    /// The signals to read; nothing: all of them. Names that there is no signal for are not an
    /// error here. Where `time` is one of these and no signal, all files are read for their
    /// times.
    std::optional<std::set<std::string>> wanted;
    /// Rows after that many of each file are not read; for a look at names and types.
    std::size_t maximumRows = std::numeric_limits<std::size_t>::max();
    /// How far from its times formulas look: so far times stay as exact as in the recording itself.
    /// `reachOf` tells it of the formulas of a file.
    ExactTime reach = oneDay;
    unsigned jobs = 1;  ///< threads
    /// Called now and then, from the threads that read, with the bytes read since the last call; at
    /// the same time from several where jobs is above 1.
    std::function<void(std::size_t)> progress;
};

/// Reads the signals of a recording as traces on one timeline. Times are exact in whole units of
/// the layout's resolution; what is finer is rounded once, to the timeline's steps.
///
/// A signal is named by its declaration in the layout, else by its column, and in a recording of
/// several files also by `file.column` without the file's ending, or with the whole path as it was
/// given where several files are called alike; a column name that several files have needs the
/// file. Who wants one column under several names gets as many signals with the same
/// pieces; who wants all signals gets each under the first of its names. An empty cell is no
/// sample, `nan` is a NaN. A column's type is that of its first value unless it is declared: `true`
/// and `false` are bool, numbers are double (std::int64_t or std::uint64_t where all are integers
/// and some have no double of their own), anything else that does not begin like a number makes it
/// an enumeration of the texts in the order of their appearance, named after the signal. A distance
/// of samples above the signal's maxGap is a hole: the trace ends at the sample before it, and a
/// new piece begins at the sample after it. No line leads to or from a sample of a linear signal
/// that is not finite: what lies between is a piece of NaN, which begins just after one sample and
/// ends just before the other.
///
/// Of a folder the files that are no tables are left out, and those without a time column unless
/// one of their columns is wanted; a file alone has to be usable.
///
/// Throws InputError, naming file, line and column, for whatever cannot be read as described: cells
/// of a wrong kind, numbers of a held column that no type holds exactly together though some are
/// 64-bit integers that double would round, rows of too few or too many cells, times that are
/// missing, not finite, go back, or repeat where the layout does not say what to do with them,
/// times that doubles cannot tell apart over so long a recording in units of the resolution, a time
/// column whose unit is not known, missing columns, empty files, a file given twice. Linear in the
/// bytes; the memory is that of the traces and a few buffers.
Recording readRecording(const RecordingSource& source, const RecordingLayout& layout,
                        const ReadingOptions& options = {});

}  // namespace vorm::evaluation
