#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/signal/signal_column.hpp>

namespace vorm::evaluation {

struct RecordingOptions {
    /// The unit in which times are counted: those that are whole numbers of it are exact.
    ExactTime resolution = nanosecond;
    /// How far from its times formulas look: so far times stay as exact as in the columns, up to a
    /// day or more.
    ExactTime reach = {};
};

/// The recording whose signals are these columns, each with its own times and on one timeline: the
/// same as of a file that has their rows. Throws InputError for what signalOf throws it, and for
/// two signals of one name. Linear in the samples.
Recording recordingOf(std::string name, const std::vector<SignalColumn>& columns,
                      const RecordingOptions& options = {});

}  // namespace vorm::evaluation
