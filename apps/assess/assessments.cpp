#include "commands.hpp"

namespace assess {

vorm::evaluation::AssessmentFile assessmentsOf(const Options& options) {
    try {
        return vorm::evaluation::readAssessmentFile(options.assessments, options.parameters);
    } catch (const vorm::evaluation::InputError& error) {
        if (error.problem().where.file == parameterOption) {
            throw WrongUsage(error.what());
        }
        throw;
    }
}

}  // namespace assess
