#pragma once

// For the readers of recordings: the bytes of a file as the UTF-8 text that they stand for.

#include <vorm/evaluation/source/byte_source.hpp>
#include <vorm/evaluation/source/declared_encoding.hpp>

#include <memory>
#include <optional>
#include <string>

namespace vorm::evaluation {

struct DecodedSource {
    std::unique_ptr<ByteSource> bytes;  ///< UTF-8 without a byte order mark
    std::string compression;            ///< `gzip`, `Zstandard`, or empty
    std::string encoding;               ///< `UTF-8`, `UTF-16LE`, `UTF-16BE` or `Windows-1252`
    bool isEncodingAssumed = false;  ///< neither a mark nor the user says so, and it is not UTF-8
};

/// The text of a file, decompressed and decoded. A byte order mark tells its encoding, else the
/// declaration, else the first 64 KiB: UTF-16 has zero bytes on one side of its characters, what is
/// not valid UTF-8 is Windows-1252, and the rest is UTF-8, which is not looked at further. Throws
/// InputError, as read does, for bytes that the encoding does not have, and for zero bytes in what
/// is not declared: these are binary data.
DecodedSource openBytes(std::unique_ptr<ByteSource> source, const std::string& path,
                        std::optional<DeclaredEncoding> declared = std::nullopt);

}  // namespace vorm::evaluation
