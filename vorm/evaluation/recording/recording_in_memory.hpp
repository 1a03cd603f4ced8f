#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/signal/signal_column.hpp>

#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation {

struct RecordingOptions {
    /// The unit in which times are counted, one of timeUnits up to a second: those that are whole
    /// numbers of it are exact.
    ExactTime resolution = nanosecond;
    /// How far from its times formulas look: so far times stay as exact as in the columns.
    /// `reachOf` tells it of the formulas of a file.
    ExactTime reach = oneDay;
    /// What formulas name, `ParsedFormula::names`: of a column `x` the recording has `held(x)`,
    /// too, where that is among it.
    std::set<std::string> names = {};
};

/// The recording whose signals are these columns, each with its own times and on one timeline: the
/// same as of a file that has their rows. Throws InputError for what timelineOf and signalOf throw
/// it, for two signals of one name, and for an enumeration without a name, with a member twice, or
/// with other members than one of its name in another signal. Linear in the samples.
Recording recordingOf(std::string name, const std::vector<SignalColumn>& columns,
                      const RecordingOptions& options = {});

}  // namespace vorm::evaluation
