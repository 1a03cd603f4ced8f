#pragma once

// Which instant is time 0 of a recording.

#include <vorm/evaluation/recording/table.hpp>

#include <vector>

namespace vorm::evaluation {

/// The origin for each of the tables; nothing for those without a time column. Throws InputError
/// where the choice names no file of the recording, or no time.
std::vector<std::optional<Origin>> originsOf(std::vector<Table>& tables,
                                             const TimeOrigin::Choice& choice);

}  // namespace vorm::evaluation
