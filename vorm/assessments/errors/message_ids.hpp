#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/message_id.hpp>

#include <string>
#include <vector>

namespace vorm::assessments {

using platform::MessageId;

/// The component of every message of this library.
inline constexpr const char* messageComponent = "quillet:assessments";

/// The identifier of one of this library's messages, with UTF-8 texts as UTF-16 arguments.
VORM_ASSESSMENTS_EXPORT MessageId assessmentMessage(std::string key,
                                                    const std::vector<std::string>& texts = {});

}  // namespace vorm::assessments

namespace quillet::assessments {

/// The message of a sample whose time is not greater than that of the sample before it.
struct VORM_ASSESSMENTS_EXPORT TimeValueMustIncrease : vorm::platform::MessageId {
    TimeValueMustIncrease();
};

}  // namespace quillet::assessments
