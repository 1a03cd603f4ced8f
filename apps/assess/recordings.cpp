#include "commands.hpp"

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

}  // namespace assess
