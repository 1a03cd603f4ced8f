#pragma once

// The style and the script of the HTML report, which the build takes from the files beside this
// one; for the report alone.

#include <string_view>

namespace vorm::evaluation {

/// A part of the page and the SHA-256 of its bytes in hexadecimal digits.
struct PagePart {
    std::string_view text;
    std::string_view hash;
};

extern const PagePart reportStyle;
extern const PagePart reportScript;

}  // namespace vorm::evaluation
