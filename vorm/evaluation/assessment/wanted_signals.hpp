#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>

#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// The names that the assessments and the definitions that they use may mean signals by.
std::set<std::string> namesToRead(const AssessmentFile& file,
                                  const std::vector<const Assessment*>& assessments);

/// How far from a time the formula looks at most; a thousand days if it is more.
ExactTime reachOf(const ParsedFormula& formula);

/// How far from a time the formulas of the assessments look at most; a thousand days if it is more.
ExactTime reachOf(const AssessmentFile& file, const std::vector<const Assessment*>& assessments);

}  // namespace vorm::evaluation
