#pragma once

// Text as HTML; for the reports that are pages or pictures.

#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The text with everything that means something to HTML or XML, in an attribute too, written as a
/// reference. What is no UTF-8 and control characters, which neither can have, become U+FFFD.
std::string htmlText(std::string_view text);

/// The text as a string of JSON that may stand in a script element: nothing in it ends one.
std::string jsonText(std::string_view text);

}  // namespace vorm::evaluation
