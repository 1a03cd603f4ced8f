#include "assessment_type_exception.hpp"

#include <vorm/assessments/errors/array_class_id_name.hpp>
#include <vorm/assessments/errors/assessment_exception_visitor.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <type_traits>

namespace vorm::assessments {
namespace {

struct TypeNameVisitor : boost::static_visitor<std::string> {
    std::string operator()(const std::string& name) const { return name; }

    template <class T>
    std::string operator()(AssessmentTypeException::typeTAG<T>) const {
        // The host numbers its numeric classes in the order of the value types.
        constexpr std::int32_t firstNumericId = 6;
        return ArrayClassIdName(firstNumericId + std::int32_t{valueTypeIndex<T>});
    }
    std::string operator()(AssessmentTypeException::typeTAG<bool>) const {
        constexpr std::int32_t logicalId = 3;
        return ArrayClassIdName(logicalId);
    }
    std::string operator()(AssessmentTypeException::typeTAG<HalfFloat>) const {
        return ArrayClassIdName(halfClassId);
    }
    std::string operator()(AssessmentTypeException::typeTAG<ValueType<FixedPoint>>) const {
        return platform::FixedPointClassName();
    }
    std::string operator()(AssessmentTypeException::typeTAG<ValueType<resultEnum_t>>) const {
        return "resultType_t";
    }
};

}  // namespace

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

}  // namespace vorm::assessments
