#include "type_exceptions.hpp"

#include <vorm/assessments/platform/array_class_naming_service.hpp>
#include <vorm/assessments/value_families.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

namespace vorm::assessments {
namespace {

struct TypeNameVisitor : boost::static_visitor<std::string> {
    std::string operator()(const std::string& name) const { return name; }

    template <class T>
    std::string operator()(AssessmentTypeException::typeTAG<T>) const {
        if constexpr (support::isReal<T> || support::isInteger<T>) {
            // The host numbers its numeric classes in the order of the value types.
            constexpr std::int32_t firstNumericId = 6;
            static_assert(valueTypeIndex<T> <= valueTypeIndex<std::uint64_t>,
                          "A value type that the host does not number.");
            return ArrayClassIdName(firstNumericId + std::int32_t{valueTypeIndex<T>});
        } else if constexpr (support::isBool<T>) {
            constexpr std::int32_t logicalId = 3;
            return ArrayClassIdName(logicalId);
        } else if constexpr (support::isHalf<T>) {
            return ArrayClassIdName(halfClassId);
        } else if constexpr (support::isFixedPoint<T>) {
            return platform::FixedPointClassName();
        } else if constexpr (support::isVerdict<T>) {
            return "resultType_t";
        } else {
            static_assert(support::isForgotten<T>, "A value type without a name in messages.");
        }
    }
};

}  // namespace

std::string ArrayClassIdName(std::int32_t classId) {
    if (classId == halfClassId) {
        return "half";
    }
    const auto service = platform::ArrayClassNamingService::global();
    const char* name = service->className(classId);
    return name ? name : "";
}

AssessmentTypeException::AssessmentTypeException(const TypeTag& type,
                                                 const std::shared_ptr<AssessmentException>& cause)
    : AssessmentTypeException(assessmentMessage("UnaryTypeError", {getTypeName(type)}), type,
                              cause) {}

AssessmentTypeException::AssessmentTypeException(const MessageId& id, const TypeTag& type,
                                                 const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(id, cause), type_(type) {}

AssessmentTypeException* AssessmentTypeException::clone() const {
    return new AssessmentTypeException(*this);
}

void AssessmentTypeException::rethrow() const {
    throw AssessmentTypeException(*this);
}

void AssessmentTypeException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

std::string AssessmentTypeException::getTypeName(const TypeTag& type) {
    return boost::apply_visitor(TypeNameVisitor(), type);
}

std::string AssessmentTypeException::getRHSTypeName() const {
    return getTypeName(type_);
}

AssessmentBinaryTypeException::AssessmentBinaryTypeException(
    const TypeTag& left, const TypeTag& right, const std::shared_ptr<AssessmentException>& cause)
    : AssessmentTypeException(
          assessmentMessage("BinaryTypeError", {getTypeName(left), getTypeName(right)}), right,
          cause),
      left_(left) {}

AssessmentBinaryTypeException* AssessmentBinaryTypeException::clone() const {
    return new AssessmentBinaryTypeException(*this);
}

void AssessmentBinaryTypeException::rethrow() const {
    throw AssessmentBinaryTypeException(*this);
}

void AssessmentBinaryTypeException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

std::string AssessmentBinaryTypeException::getLHSTypeName() const {
    return getTypeName(left_);
}

}  // namespace vorm::assessments
