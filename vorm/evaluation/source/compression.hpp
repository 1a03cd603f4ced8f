#pragma once

// For `openBytes`: files as they were before they were compressed.

#include <vorm/evaluation/source/byte_source.hpp>

#include <memory>
#include <string>

namespace vorm::evaluation {

struct Decompressed {
    std::unique_ptr<ByteSource> bytes;
    std::string compression;  ///< `gzip`, `Zstandard`, or empty where the bytes come unchanged
};

/// The bytes before they were compressed, which the first of them tell, not the name of the file.
/// Several gzip members or Zstandard frames, one after the other, are one text. read throws
/// InputError for what is cut off, damaged, or followed by other bytes. A file that is cut exactly
/// between two members is a whole one, and so is damage that no checksum covers: gzip has one
/// always, Zstandard where it was asked for.
Decompressed decompressed(std::unique_ptr<ByteSource> source, const std::string& path);

}  // namespace vorm::evaluation
