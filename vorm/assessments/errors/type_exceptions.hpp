#pragma once

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/value_types.hpp>

#include <boost/variant/variant.hpp>

#include <cstdint>
#include <memory>
#include <string>

namespace vorm::assessments {

/// The identifier under which half-precision values are named; no host knows it.
inline constexpr std::int32_t halfClassId = -2357;

/// The name of a numeric class: "half" for halfClassId, for any other identifier the name that the
/// installed naming service gives, or an empty name where it gives none.
VORM_ASSESSMENTS_EXPORT std::string ArrayClassIdName(std::int32_t classId);

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

/// An operation that is not defined for the types of its two operands. The inherited tag is that
/// of the right operand.
class VORM_ASSESSMENTS_EXPORT AssessmentBinaryTypeException : public AssessmentTypeException {
public:
    AssessmentBinaryTypeException(const TypeTag& left, const TypeTag& right,
                                  const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentBinaryTypeException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;

    /// The name of the left operand's type.
    std::string getLHSTypeName() const;

private:
    TypeTag left_;
};

}  // namespace vorm::assessments
