// Any bytes as a list of recordings: each line, or each part between zero bytes, is a path, or the
// list is refused with InputError.

#include "file_of.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <commands.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const vorm::fuzz::FileOf file(data, size);
    assess::Options options;
    options.recordingList = file.path();
    try {
        assess::arrangeRecordings(options);
    } catch (const vorm::evaluation::InputError&) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char*>(data), size);
    const char separator = text.find('\0') == std::string::npos ? '\n' : '\0';
    const auto separators =
        static_cast<std::size_t>(std::count(text.begin(), text.end(), separator));
    const std::size_t paths = separators + (text.back() == separator ? 0 : 1);
    const bool namesAll =
        options.recordings.size() == paths &&
        std::none_of(options.recordings.begin(), options.recordings.end(),
                     [](const std::string& path) { return path.empty() || path == "-"; });
    if (!namesAll) {
        std::abort();
    }
    return 0;
}
