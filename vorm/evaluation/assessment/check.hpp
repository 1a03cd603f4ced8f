#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <vector>

namespace vorm::evaluation {

/// What is wrong with the formulas of an assessment file, in the order of the file; empty where
/// nothing is. Without a recording signals of any name are accepted. What is wrong with a
/// definition is told once, and also where nothing uses it. Declared signals are held or linear as
/// the file says; of others neither is known.
std::vector<InputError> check(const AssessmentFile& file);

/// The same for the signals of a recording, their types and interpolations, and for the ranges of
/// time of the assessments.
std::vector<InputError> check(const AssessmentFile& file, const Recording& recording);

/// The same for a recording of which the header and the first 1,000 rows are read; that it cannot
/// be read is one error.
std::vector<InputError> check(const AssessmentFile& file, const RecordingSource& source);

/// The same for what of a file can be read: what follows from one of its errors is none, and the
/// recording is left alone where the file does not tell how to read it.
std::vector<InputError> check(const PartlyReadFile& read, const RecordingSource& source);

}  // namespace vorm::evaluation
