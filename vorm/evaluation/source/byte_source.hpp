#pragma once

// For the readers of recordings: where bytes come from. A source is read once, from the beginning
// to the end, so that pipes do as well as files.

#include <cstddef>
#include <memory>
#include <string>

namespace vorm::evaluation {

class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// Writes up to `most` bytes to `target` and gives their number; 0 at the end.
    virtual std::size_t read(char* target, std::size_t most) = 0;

    /// How many bytes of the file, as it is stored, have been read so far.
    virtual std::size_t taken() const = 0;
};

/// A file; `-` is standard input. Throws InputError, as read does, with the operating system's
/// reason.
std::unique_ptr<ByteSource> fileSource(const std::string& path);

/// The bytes of a text.
std::unique_ptr<ByteSource> textSource(std::string text);

}  // namespace vorm::evaluation
