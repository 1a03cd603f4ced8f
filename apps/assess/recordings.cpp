#include "commands.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>

namespace assess {

std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options) {
    if (options.together) {
        return {{options.recordings}};
    }
    std::vector<vorm::evaluation::RecordingSource> recordings;
    for (const std::string& path : options.recordings) {
        recordings.push_back({{path}});
    }
    return recordings;
}

vorm::evaluation::RecordingLayout layoutOf(const Options& options) {
    vorm::evaluation::RecordingLayout layout;
    if (!options.assessments.empty()) {
        layout = vorm::evaluation::readAssessmentFile(options.assessments).layout;
    }
    try {
        return vorm::evaluation::layoutWith(std::move(layout), options.layout);
    } catch (const vorm::evaluation::InputError& error) {
        throw WrongUsage(error.what());
    }
}

}  // namespace assess
