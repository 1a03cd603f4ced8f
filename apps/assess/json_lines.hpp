#pragma once

#include "earlier_run.hpp"
#include "options.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/text/output_file.hpp>

#include <string>
#include <vector>

namespace assess {

/// Whether results of that format are written recording by recording, as these are done.
inline bool comesInLines(const std::string& format) {
    return format == "jsonl";
}

/// Whether they are what the run shows on standard output.
bool showsLines(const Options& options);

/// The files that lines go to, without standard output.
std::vector<std::string> jsonLineFiles(const Options& options);

/// Writes a line of JSON for each recording of a run to where the options ask for lines.
class JsonLines {
public:
    /// `about` tells of the run and needs no recordings; all outlive the object.
    JsonLines(const vorm::evaluation::RunOutcome& about, const Options& options,
              const EarlierRun& earlier, ProgressLine& progress);

    /// The first one takes the place of what is in the files, but for the lines of the earlier run.
    /// Throws InputError where it cannot be written.
    void add(const vorm::evaluation::RecordingOutcome& recording);

    /// To be called when all are added: a torn line of the earlier run goes also where none was.
    void end();

private:
    void begin(const std::string& path);
    void beginAll();

    const vorm::evaluation::RunOutcome& about_;
    const Options& options_;
    const EarlierRun& earlier_;
    ProgressLine& progress_;
    bool isShown_;  // on standard output
    std::vector<std::string> paths_;
    std::vector<vorm::evaluation::OutputFile> files_;  // as many, once there is a line
};

}  // namespace assess
