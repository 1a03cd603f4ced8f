#pragma once

#include <vorm/assessments/export.hpp>

#include <string>
#include <string_view>

namespace vorm::platform {

/// UTF-8 text as UTF-16. Each byte that is not part of a well-formed sequence becomes U+FFFD;
/// nothing is ever refused, since the text is on its way into a message about something worse.
VORM_ASSESSMENTS_EXPORT std::u16string toUtf16(std::string_view text);

/// UTF-16 text as UTF-8, with U+FFFD for each unpaired surrogate.
VORM_ASSESSMENTS_EXPORT std::string toUtf8(std::u16string_view text);

}  // namespace vorm::platform
