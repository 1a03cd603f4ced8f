#pragma once

// For fuzz targets of what is read from a path only.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace vorm::fuzz {

/// A file in memory of those bytes, as long as the object lives.
class FileOf {
public:
    FileOf(const std::uint8_t* data, std::size_t size) : descriptor_(::memfd_create("fuzz", 0)) {
        if (descriptor_ < 0 || ::write(descriptor_, data, size) != static_cast<ssize_t>(size)) {
            std::abort();
        }
    }
    FileOf(const FileOf&) = delete;
    FileOf& operator=(const FileOf&) = delete;
    ~FileOf() { ::close(descriptor_); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

}  // namespace vorm::fuzz
