#pragma once

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/value_types.hpp>

#include <boost/variant/variant.hpp>

#include <memory>
#include <string>

namespace vorm::assessments {

/// An operation that is not defined for the type of its operand.
class VORM_ASSESSMENTS_EXPORT AssessmentTypeException : public AssessmentException {
public:
    /// Stands for the value type T.
    template <class T>
    struct typeTAG {};

    /// One alternative per value type, in the order of ValueTypes; then the name of an
    /// enumeration.
    using TypeTag = boost::mp11::mp_push_back<
        boost::mp11::mp_transform<typeTAG, boost::mp11::mp_rename<ValueTypes, boost::variant>>,
        std::string>;

    explicit AssessmentTypeException(const TypeTag& type,
                                     const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentTypeException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;

    /// The name under which a type appears in messages: that of the host's class, "half",
    /// "resultType_t", or the enumeration's name as it stands.
    static std::string getTypeName(const TypeTag& type);

    /// The name of the operand's type; of a binary operation, of the right operand's.
    std::string getRHSTypeName() const;

protected:
    AssessmentTypeException(const MessageId& id, const TypeTag& type,
                            const std::shared_ptr<AssessmentException>& cause);

private:
    TypeTag type_;
};

}  // namespace vorm::assessments
