#include "commands.hpp"

#include <string>
#include <utility>
#include <vector>

namespace assess {

namespace {

using vorm::evaluation::InputError;

// What is wrong with a setting is wrong usage.
template <class Read>
auto read(const Options& options, Read reading) {
    try {
        return reading(options.assessments, options.parameters);
    } catch (const InputError& error) {
        if (error.problem().where.file == parameterOption) {
            throw WrongUsage(error.what());
        }
        throw;
    }
}

// It says how many others there are.
InputError firstOf(const std::vector<InputError>& errors, const std::string& file) {
    vorm::evaluation::InputProblem problem = errors.front().problem();
    const std::size_t others = errors.size() - 1;
    if (others > 0) {
        problem.advice += (problem.advice.empty() ? "" : "\n") + std::to_string(others) +
                          (others == 1 ? " more error is" : " more errors are") +
                          " in the file: 'assess check " + file + "' tells all";
    }
    return InputError(problem);
}

}  // namespace

vorm::evaluation::AssessmentFile assessmentsOf(const Options& options) {
    vorm::evaluation::PartlyReadFile read = partlyReadAssessmentsOf(options);
    if (!read.errors.empty()) {
        throw firstOf(read.errors, options.assessments);
    }
    return std::move(read.file);
}

vorm::evaluation::PartlyReadFile partlyReadAssessmentsOf(const Options& options) {
    return read(options, vorm::evaluation::readPartly);
}

}  // namespace assess
