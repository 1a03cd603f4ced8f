#include "assessment_exception.hpp"

#include <vorm/assessments/platform/message_catalog.hpp>
#include <vorm/assessments/platform/utf.hpp>

#include <locale>
#include <utility>

namespace vorm::assessments {
namespace {

// Where the failure that frees its causes on this thread takes up what they leave.
constinit thread_local std::shared_ptr<AssessmentException>* leftCause = nullptr;

}  // namespace

MessageId assessmentMessage(std::string key, const std::vector<std::string>& texts) {
    std::vector<MessageId::Argument> arguments;
    arguments.reserve(texts.size());
    for (const std::string& text : texts) {
        arguments.emplace_back(platform::toUtf16(text));
    }
    return MessageId(messageComponent, std::move(key), std::move(arguments));
}

AssessmentException::AssessmentException(const MessageId& id,
                                         const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(id, platform::MessageCatalog::global()->message(id, std::locale()),
                          cause) {}

AssessmentException::AssessmentException(const MessageId& id, const std::u16string& text,
                                         const std::shared_ptr<AssessmentException>& cause)
    : UserException(text), identifier_(id.component + ":" + id.key), text_(text), cause_(cause) {}

// A cause that dies while another failure frees it leaves its own cause there, so that a chain is
// freed in a loop. Which owner of a shared cause is the last one, its reference count alone tells.
AssessmentException::~AssessmentException() {
    if (leftCause != nullptr && *leftCause == nullptr) {
        *leftCause = std::move(cause_);
        return;
    }
    std::shared_ptr<AssessmentException> left;
    std::shared_ptr<AssessmentException>* const outer = std::exchange(leftCause, &left);
    while (cause_ != nullptr) {
        cause_.reset();
        cause_.swap(left);
    }
    leftCause = outer;
}

AssessmentException* AssessmentException::clone() const {
    return new AssessmentException(*this);
}

void AssessmentException::rethrow() const {
    throw AssessmentException(*this);
}

void AssessmentException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

std::string AssessmentException::GetID() const {
    return identifier_;
}

std::u16string AssessmentException::GetUnicodeMessageTxt() const {
    return text_;
}

const std::shared_ptr<AssessmentException>& AssessmentException::getCause() const {
    return cause_;
}

AssessmentInternalException::AssessmentInternalException(
    const std::string& text, const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(assessmentMessage("ExpressionEvaluationInternalError", {text}), cause) {}

AssessmentInternalException* AssessmentInternalException::clone() const {
    return new AssessmentInternalException(*this);
}

void AssessmentInternalException::rethrow() const {
    throw AssessmentInternalException(*this);
}

void AssessmentInternalException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

AssessmentExceptionVisitor::~AssessmentExceptionVisitor() = default;

}  // namespace vorm::assessments

namespace quillet::assessments {

TimeValueMustIncrease::TimeValueMustIncrease()
    : MessageId(vorm::assessments::messageComponent, "TimeValueMustIncrease") {}

}  // namespace quillet::assessments
