#pragma once

#include <vorm/assessments/errors/message_ids.hpp>
#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/user_exception.hpp>

#include <memory>
#include <string>

namespace vorm::assessments {

class AssessmentExceptionVisitor;

/// A failure of the library, with the message for the user and the failure that led to it.
///
/// Copies share the cause. Identifier and text are fixed at construction, in the process-global
/// locale of that moment.
class VORM_ASSESSMENTS_EXPORT AssessmentException : public platform::UserException {
public:
    explicit AssessmentException(const MessageId& id,
                                 const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentException(const AssessmentException&) = default;
    AssessmentException& operator=(const AssessmentException&) = default;
    /// Frees the causes one after the other, so that a long chain does not exhaust the stack.
    ~AssessmentException() override;

    /// A heap copy of the same dynamic class; the caller owns it.
    virtual AssessmentException* clone() const;

    /// Throws a copy of this object as its own dynamic class.
    [[noreturn]] virtual void rethrow() const;

    /// Calls the visitor's overload for the dynamic class of this object.
    virtual void accept(AssessmentExceptionVisitor& visitor) const;

    /// Component and key of the message, joined by a colon.
    std::string GetID() const;

    /// The message in UTF-16.
    std::u16string GetUnicodeMessageTxt() const;

    /// The failure that led to this one, or null.
    const std::shared_ptr<AssessmentException>& getCause() const;

private:
    AssessmentException(const MessageId& id, const std::u16string& text,
                        const std::shared_ptr<AssessmentException>& cause);

    std::string identifier_;
    std::u16string text_;
    std::shared_ptr<AssessmentException> cause_;
};

}  // namespace vorm::assessments
