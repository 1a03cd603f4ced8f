#include "commands.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/text/natural_order.hpp>

#include <algorithm>

namespace assess {

using vorm::evaluation::isNaturallyBefore;

std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options) {
    if (options.together) {
        return {{options.recordings}};
    }
    std::vector<vorm::evaluation::RecordingSource> recordings;
    for (const std::string& path : options.recordings) {
        recordings.push_back({{path}});
    }
    // A shell's pattern gives run10 before run2.
    if (std::is_sorted(options.recordings.begin(), options.recordings.end())) {
        std::stable_sort(recordings.begin(), recordings.end(),
                         [](const auto& one, const auto& other) {
                             return isNaturallyBefore(one.name(), other.name());
                         });
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
