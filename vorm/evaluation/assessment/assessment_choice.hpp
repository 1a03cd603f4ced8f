#pragma once

#include <vorm/evaluation/assessment/assess.hpp>

#include <vector>

namespace vorm::evaluation {

/// The assessments that `only` and `skip` of the options leave, in the order of the file: all that
/// some text in `only` chooses, or all of the file where that is empty, but those that a text in
/// `skip` chooses.
///
/// A text chooses the assessment of that name; where there is none, those whose whole name the
/// text is as a shell's pattern, with `*`, `?` and `[abc]`; and behind `tag:` those that have a tag
/// that is chosen in the same way. Throws InputError for a text that chooses none, with the nearest
/// names, and where none is left.
std::vector<const Assessment*> chosenAssessments(const AssessmentFile& file,
                                                 const RunOptions& options);

}  // namespace vorm::evaluation
