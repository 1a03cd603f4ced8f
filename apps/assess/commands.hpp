#pragma once

#include "options.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace assess {

/// A command line that cannot be used, although its words are known.
struct WrongUsage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The sub-commands. They throw vorm::evaluation::InputError for input that cannot be used.

/// The names of the formats that runAssessments knows.
std::vector<std::string> runFormats();

ExitCode runAssessments(const Options& options);
ExitCode checkAssessments(const Options& options);
ExitCode showSignals(const Options& options);
ExitCode draftAssessments(const Options& options);
ExitCode showAssessment(const Options& options);

/// The assessment file with the parameters that the command line sets. Throws WrongUsage where the
/// file does not have them so, and InputError as readAssessmentFile does, which then says how many
/// more errors there are.
vorm::evaluation::AssessmentFile assessmentsOf(const Options& options);

/// The same as far as it can be read, with all that is wrong in it.
vorm::evaluation::PartlyReadFile partlyReadAssessmentsOf(const Options& options);

/// Whether some results of a run can only be made when all its recordings are done: not the table
/// on standard output and JSON lines.
bool needsAllOutcomes(const Options& options);

/// Adds the recordings of the list that the options name, if they do, to those of the command line.
/// Throws InputError for a list that cannot be read, has an empty line, or names none. Without a
/// list, paths that are one recording each and come in the order of their characters, as a shell's
/// pattern gives them, get their natural order.
void arrangeRecordings(Options& options);

/// How many recordings the command line names: each path one, or all of them together.
std::size_t recordingCount(const Options& options);
vorm::evaluation::RecordingSource recordingAt(const Options& options, std::size_t number);
/// All of them.
std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options);

/// How they are to be read: as the assessment file says, if there is one, but for what the options
/// of the command line change. Throws WrongUsage where these say something that is no layout.
vorm::evaluation::RecordingLayout layoutOf(const Options& options);

}  // namespace assess
