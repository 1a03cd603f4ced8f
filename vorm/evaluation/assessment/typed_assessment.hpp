#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// What names mean in a file without data: declared signals have their declared type and are held
/// or linear as the file says, any other name is a signal of which neither is known.
FormulaNames namesWithoutData(const AssessmentFile& file);

/// What names mean in a recording. Refers to both arguments.
FormulaNames namesIn(const AssessmentFile& file, const Recording& recording);

/// The same without definitions.
FormulaNames namesIn(const Recording& recording);

/// The types of a formula that is to be assessed. Throws FormulaError, placed in the formula's
/// text, where it does not fit, is neither true nor false, or reads no signal.
Formula typedFormula(const ParsedFormula& formula, const FormulaNames& names);

/// The signals that a formula reads, which was typed for the recording; the time is one only where
/// there is no other, since it is also known where they are not.
std::vector<const Signal*> signalsOf(const Formula& formula, const Recording& recording);

/// The formula of an assessment. Throws InputError, placed in the file, where it does not fit, is
/// neither true nor false, or reads no signal.
Formula typedFormula(const AssessmentFile& file, const Assessment& assessment,
                     const FormulaNames& names);

/// Checks a definition as if an assessment used it. Throws InputError, placed in the file.
void checkDefinition(const AssessmentFile& file, const std::string& definition,
                     const FormulaNames& names);

/// An assessment with its formula for the types of a recording, and where it looks at that.
struct TypedAssessment {
    const Assessment* assessment;
    const Recording* recording;
    Formula formula;
    std::vector<const Signal*> signals;  ///< that the formula reads
    std::optional<ExactTime> from;       ///< where the assessment says so
    std::optional<ExactTime> to;         ///< where the assessment says so
    std::optional<CountedSpan> known;    ///< from the first to the last time at which one is known
    std::optional<CountedSpan> range;    ///< nothing where its signals have no samples there
};

/// The same assessment for a recording, both of which it refers to; `names` are those of the
/// recording. Throws InputError as typedFormula does, and for a range that is none.
TypedAssessment typedAssessment(const AssessmentFile& file, const Assessment& assessment,
                                const FormulaNames& names, const Recording& recording);

}  // namespace vorm::evaluation
