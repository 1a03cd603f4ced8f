#include "message_ids.hpp"

#include <vorm/assessments/platform/utf.hpp>

#include <utility>

namespace vorm::assessments {

MessageId assessmentMessage(std::string key, const std::vector<std::string>& texts) {
    std::vector<MessageId::Argument> arguments;
    arguments.reserve(texts.size());
    for (const std::string& text : texts) {
        arguments.emplace_back(platform::toUtf16(text));
    }
    return MessageId(messageComponent, std::move(key), std::move(arguments));
}

}  // namespace vorm::assessments

namespace quillet::assessments {

TimeValueMustIncrease::TimeValueMustIncrease()
    : MessageId(vorm::assessments::messageComponent, "TimeValueMustIncrease") {}

}  // namespace quillet::assessments
