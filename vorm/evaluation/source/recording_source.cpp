#include "recording_source.hpp"

namespace vorm::evaluation {

std::string RecordingSource::name() const {
    std::string text;
    for (const std::string& path : paths) {
        text += (text.empty() ? "" : "+") + path;
    }
    return part == 0 ? text : text + ", part " + std::to_string(part);
}

}  // namespace vorm::evaluation
