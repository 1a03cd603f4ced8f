#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/check.hpp>

#include <algorithm>
#include <iostream>
#include <set>
#include <tuple>

namespace assess {
namespace {

using namespace vorm::evaluation;

std::string summaryOf(const AssessmentFile& file, const std::string& against) {
    const std::size_t count = file.assessments.size();
    return file.name + ": " + std::to_string(count) +
           (count == 1 ? " assessment fits" : " assessments fit") + against + "\n";
}

std::string countOf(std::size_t errors) {
    return std::to_string(errors) + (errors == 1 ? " error" : " errors");
}

// Checks a file, against each recording if there are some; each error is told once.
class Checking {
public:
    explicit Checking(const Options& options)
        : options_(options), read_(partlyReadAssessmentsOf(options)) {}

    ExitCode run() {
        if (options_.recordings.empty()) {
            tell(check(read_.file), "");
        }
        for (const RecordingSource& source : recordingsOf(options_)) {
            tell(check(read_, source), " " + source.name());
        }
        if (!options_.quiet && told_.empty() && options_.recordings.empty()) {
            std::cerr << "note: without a recording, signals of any name are accepted; --against "
                         "checks them\n";
        }
        if (!options_.quiet && !told_.empty()) {
            std::cerr << read_.file.name << ": " << countOf(told_.size()) << "\n";
        }
        return told_.empty() ? ExitCode::NothingFailed : ExitCode::UnusableInput;
    }

private:
    // In the order of the file.
    void tell(std::vector<InputError> errors, const std::string& against) {
        errors.insert(errors.begin(), read_.errors.begin(), read_.errors.end());
        const auto place = [this](const InputError& error) {
            const SourceLocation& where = error.problem().where;
            return std::tuple(where.file != read_.file.name, where.line, where.column);
        };
        std::stable_sort(errors.begin(), errors.end(),
                         [&](const InputError& one, const InputError& other) {
                             return place(one) < place(other);
                         });
        for (const InputError& error : errors) {
            if (told_.insert(messageOf(error)).second) {
                std::cerr << messageOf(error) << "\n";
            }
        }
        if (errors.empty()) {
            writeResults(options_, summaryOf(read_.file, against));
        }
    }

    const Options& options_;
    const PartlyReadFile read_;
    std::set<std::string> told_;
};

}  // namespace

ExitCode checkAssessments(const Options& options) {
    return Checking(options).run();
}

}  // namespace assess
