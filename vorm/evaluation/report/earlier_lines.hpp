#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>

#include <cstdint>
#include <functional>
#include <string>

namespace vorm::evaluation {

/// Reads the lines of JSON that a run has written before it was interrupted, and hands each
/// recording over as far as summaries need it: names, verdicts, errors, where it fails and is open,
/// and to how many digits its times are shown. A last line without its end was never whole and is
/// left out. Gives the bytes of the whole lines; none where there is no such file.
///
/// Throws InputError, with its line, for a file that cannot be read, for what is no such line, and
/// for a line whose fingerprint is another one: it tells of other requirements. Linear in the
/// bytes, and one line in memory.
std::uintmax_t readEarlierLines(const std::string& path, const std::string& fingerprint,
                                const std::function<void(const RecordingOutcome&)>& take);

}  // namespace vorm::evaluation
