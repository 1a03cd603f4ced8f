#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/message_id.hpp>
#include <vorm/assessments/platform/user_exception.hpp>

#include <memory>
#include <string>
#include <vector>

namespace vorm::assessments {

using platform::MessageId;

/// The component of every message of this library.
inline constexpr const char* messageComponent = "quillet:assessments";

/// The identifier of one of this library's messages, with UTF-8 texts as UTF-16 arguments.
VORM_ASSESSMENTS_EXPORT MessageId assessmentMessage(std::string key,
                                                    const std::vector<std::string>& texts = {});

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

/// A failure described by a literal English text: an operation that the operands do not allow, or
/// a foreign exception met during evaluation.
class VORM_ASSESSMENTS_EXPORT AssessmentInternalException : public AssessmentException {
public:
    explicit AssessmentInternalException(
        const std::string& text, const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentInternalException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;
};

class AssessmentTypeException;
class AssessmentBinaryTypeException;
class AssessmentEvaluationException;

/// Tells the classes of failures apart; see AssessmentException::accept.
class VORM_ASSESSMENTS_EXPORT AssessmentExceptionVisitor {
public:
    virtual ~AssessmentExceptionVisitor();

    virtual void visit(const AssessmentException& failure) = 0;
    virtual void visit(const AssessmentInternalException& failure) = 0;
    virtual void visit(const AssessmentTypeException& failure) = 0;
    virtual void visit(const AssessmentBinaryTypeException& failure) = 0;
    virtual void visit(const AssessmentEvaluationException& failure) = 0;
};

}  // namespace vorm::assessments

namespace quillet::assessments {

/// The message of a sample whose time is not greater than that of the sample before it.
struct VORM_ASSESSMENTS_EXPORT TimeValueMustIncrease : vorm::platform::MessageId {
    TimeValueMustIncrease();
};

}  // namespace quillet::assessments
