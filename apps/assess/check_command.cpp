#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/check.hpp>

#include <algorithm>
#include <iostream>

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

// Checks a file, against each recording if there are some; its errors are told once.
class Checking {
public:
    explicit Checking(const Options& options)
        : options_(options), read_(partlyReadAssessmentsOf(options)), file_(checkablePart(read_)) {}

    ExitCode run() {
        if (options_.recordings.empty()) {
            tell(check(file_), "");
        }
        for (const RecordingSource& source : recordingsOf(options_)) {
            tell(check(file_, source), " " + source.name());
        }
        if (!options_.quiet && errors_ == 0 && options_.recordings.empty()) {
            std::cerr << "note: without a recording, signals of any name are accepted; --against "
                         "checks them\n";
        }
        if (!options_.quiet && errors_ > 0) {
            std::cerr << file_.name << ": " << countOf(errors_) << "\n";
        }
        return errors_ == 0 ? ExitCode::NothingFailed : ExitCode::UnusableInput;
    }

private:
    // The errors of the text come with the first ones, in the order of the file.
    void tell(std::vector<InputError> errors, const std::string& against) {
        errors.insert(errors.begin(), read_.errors.begin(), read_.errors.end());
        read_.errors.clear();
        std::stable_sort(errors.begin(), errors.end(),
                         [](const InputError& one, const InputError& other) {
                             return one.problem().where.line < other.problem().where.line;
                         });
        for (const InputError& error : errors) {
            std::cerr << messageOf(error) << "\n";
        }
        errors_ += errors.size();
        if (errors.empty()) {
            writeResults(options_, summaryOf(file_, against));
        }
    }

    const Options& options_;
    PartlyReadFile read_;
    const AssessmentFile file_;
    std::size_t errors_ = 0;
};

}  // namespace

ExitCode checkAssessments(const Options& options) {
    return Checking(options).run();
}

}  // namespace assess
