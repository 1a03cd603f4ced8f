#pragma once

#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/source/recording_source.hpp>

#include <vector>

namespace vorm::evaluation {

/// The recordings that one file is where the layout splits it: a new one begins with each row whose
/// time goes back. The source alone where the layout does not split. Throws InputError, also for
/// what cannot be split: several files, standard input, columns with times of their own. Linear in
/// the bytes.
std::vector<RecordingSource> partsOf(const RecordingSource& source, const RecordingLayout& layout);

}  // namespace vorm::evaluation
