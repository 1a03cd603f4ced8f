#pragma once

// Which instant is time 0 of a recording.

#include <vorm/evaluation/table/table.hpp>

#include <vector>

namespace vorm::evaluation {

/// The instant of each of the tables that is time 0, as its file counts. Throws InputError where
/// the choice names no file of the recording, or no time.
std::vector<ExactTime> originsOf(std::vector<Table>& tables, const TimeOrigin::Choice& choice);

}  // namespace vorm::evaluation
