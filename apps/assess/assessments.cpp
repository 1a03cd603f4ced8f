#include "commands.hpp"

namespace assess {

namespace {

// What is wrong with a setting is wrong usage.
template <class Read>
auto read(const Options& options, Read reading) {
    try {
        return reading(options.assessments, options.parameters);
    } catch (const vorm::evaluation::InputError& error) {
        if (error.problem().where.file == parameterOption) {
            throw WrongUsage(error.what());
        }
        throw;
    }
}

}  // namespace

vorm::evaluation::AssessmentFile assessmentsOf(const Options& options) {
    return read(options, vorm::evaluation::readAssessmentFile);
}

vorm::evaluation::PartlyReadFile partlyReadAssessmentsOf(const Options& options) {
    return read(options, vorm::evaluation::readPartly);
}

}  // namespace assess
