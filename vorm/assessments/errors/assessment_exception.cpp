#include "assessment_exception.hpp"

#include <vorm/assessments/errors/assessment_exception_visitor.hpp>
#include <vorm/assessments/platform/message_catalog.hpp>

#include <locale>
#include <utility>

namespace vorm::assessments {

AssessmentException::AssessmentException(const MessageId& id,
                                         const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(id, platform::MessageCatalog::global()->message(id, std::locale()),
                          cause) {}

AssessmentException::AssessmentException(const MessageId& id, const std::u16string& text,
                                         const std::shared_ptr<AssessmentException>& cause)
    : UserException(text), identifier_(id.component + ":" + id.key), text_(text), cause_(cause) {}

AssessmentException::~AssessmentException() {
    std::shared_ptr<AssessmentException> cause = std::move(cause_);
    while (cause && cause.use_count() == 1) {
        cause = std::shared_ptr<AssessmentException>(std::move(cause->cause_));
    }
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

}  // namespace vorm::assessments
