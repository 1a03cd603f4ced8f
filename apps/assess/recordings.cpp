#include "commands.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/natural_order.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace assess {

using vorm::evaluation::isNaturallyBefore;

namespace {

std::vector<std::string> pathsIn(std::string_view text, const std::string& list) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        vorm::evaluation::failAt({list}, "is in UTF-16", "save it as UTF-8");
    }
    const bool hasZeros = text.find('\0') != std::string_view::npos;
    const char separator = hasZeros ? '\0' : '\n';
    std::vector<std::string> paths;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        std::string_view path = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!hasZeros && path.ends_with('\r')) {
            path.remove_suffix(1);
        }
        const std::size_t number = paths.size() + 1;
        const auto fail = [&](const std::string& what, const std::string& advice) {
            vorm::evaluation::failAt(
                {list, hasZeros ? 0 : number},
                (hasZeros ? "path " + std::to_string(number) + " " : "") + what, advice);
        };
        if (path.empty()) {
            fail("names no recording", hasZeros ? "the paths are separated by one zero byte each"
                                                : "each line is the path of a recording");
        }
        if (path == "-") {
            fail("names standard input", "give it on the command line");
        }
        paths.emplace_back(path);
    }
    return paths;
}

void addListed(const std::string& list, std::vector<std::string>& recordings) {
    const std::string name = list == "-" ? "standard input" : list;
    std::vector<std::string> paths = pathsIn(vorm::evaluation::readFile(list), name);
    if (paths.empty()) {
        vorm::evaluation::failAt({name}, "names no recording", "write a path on each line");
    }
    std::move(paths.begin(), paths.end(), std::back_inserter(recordings));
}

}  // namespace

void arrangeRecordings(Options& options) {
    std::vector<std::string>& recordings = options.recordings;
    if (!options.recordingList.empty()) {
        addListed(options.recordingList, recordings);
    } else if (!options.together && std::is_sorted(recordings.begin(), recordings.end())) {
        // A shell's pattern gives run10 before run2.
        std::stable_sort(recordings.begin(), recordings.end(), isNaturallyBefore);
    }
}

std::size_t recordingCount(const Options& options) {
    return options.together ? 1 : options.recordings.size();
}

vorm::evaluation::RecordingSource recordingAt(const Options& options, std::size_t number) {
    if (options.together) {
        return {options.recordings};
    }
    return {{options.recordings[number]}};
}

std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options) {
    std::vector<vorm::evaluation::RecordingSource> recordings;
    for (std::size_t i = 0; i < recordingCount(options); ++i) {
        recordings.push_back(recordingAt(options, i));
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
