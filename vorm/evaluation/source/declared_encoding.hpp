#pragma once

#include <cstdint>

namespace vorm::evaluation {

/// What a user says that files without a byte order mark are written in.
enum class DeclaredEncoding : std::uint8_t {
    Utf8,
    Utf16,
    Latin1,  ///< with what Windows-1252 adds to it
};

}  // namespace vorm::evaluation
