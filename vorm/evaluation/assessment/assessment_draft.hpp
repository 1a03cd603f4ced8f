#pragma once

#include <vorm/evaluation/assessment/layout_keys.hpp>
#include <vorm/evaluation/recording/recording_survey.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// The text of an assessment file to begin with: how these recordings, each with its name, are
/// read, as it was found or stated by the settings; every signal of theirs with its type, its unit
/// and its values; and three assessments that can be run on each of them, of signals that are
/// numbers, bools or few texts in all of them. Without such signals it has none, and says so. Files
/// without times are left out; throws InputError where a recording has no others.
std::string assessmentDraft(const RecordingSurveys& recordings,
                            const std::vector<LayoutSetting>& settings);

}  // namespace vorm::evaluation
