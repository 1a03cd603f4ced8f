#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// The names that the assessments and the definitions that they use may mean signals by.
std::set<std::string> namesToRead(const AssessmentFile& file,
                                  const std::vector<const Assessment*>& assessments);

/// How far from a time the formulas of the assessments look at most; a thousand days if it is more.
ExactTime reachOf(const AssessmentFile& file, const std::vector<const Assessment*>& assessments);

/// What names mean in a file without data: declared signals have their declared type, any other
/// name is a signal of unknown type.
FormulaNames namesWithoutData(const AssessmentFile& file);

/// What names mean in a recording. Refers to both arguments.
FormulaNames namesIn(const AssessmentFile& file, const Recording& recording);

/// The formula of an assessment. Throws InputError, placed in the file, where it does not fit, is
/// neither true nor false, or reads no signal.
Formula typedFormula(const AssessmentFile& file, const Assessment& assessment,
                     const FormulaNames& names);

/// Checks a definition as if an assessment used it. Throws InputError, placed in the file.
void checkDefinition(const AssessmentFile& file, const std::string& definition,
                     const FormulaNames& names);

}  // namespace vorm::evaluation
