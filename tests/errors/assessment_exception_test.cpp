#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace vorm::assessments {
namespace {

using TypeException = AssessmentTypeException;

template <class T>
TypeException::TypeTag tag() {
    return TypeException::typeTAG<T>();
}

TEST(AssessmentException, CarriesIdentifierTextAndSharedCause) {
    const auto cause = std::make_shared<AssessmentInternalException>("first fault");
    const AssessmentException failure(quillet::assessments::TimeValueMustIncrease(), cause);
    EXPECT_EQ(failure.GetID(), "quillet:assessments:TimeValueMustIncrease");
    EXPECT_EQ(failure.getCause(), cause);
    EXPECT_FALSE(failure.GetUnicodeMessageTxt().empty());
    EXPECT_EQ(cause->getCause(), nullptr);
    EXPECT_NE(std::string(cause->what()).find("first fault"), std::string::npos);
}

TEST(AssessmentTypeException, NamesEveryType) {
    const struct {
        TypeException::TypeTag type;
        std::string name;
    } rows[] = {{tag<double>(), "double"},
                {tag<float>(), "single"},
                {tag<signed char>(), "int8"},
                {tag<unsigned char>(), "uint8"},
                {tag<short>(), "int16"},
                {tag<unsigned short>(), "uint16"},
                {tag<int>(), "int32"},
                {tag<unsigned int>(), "uint32"},
                {tag<long>(), "int64"},
                {tag<unsigned long>(), "uint64"},
                {tag<bool>(), "logical"},
                {tag<HalfFloat>(), "half"},
                {tag<ValueType<FixedPoint>>(), platform::FixedPointClassName()},
                {tag<ValueType<resultEnum_t>>(), "resultType_t"},
                {std::string("Gear"), "Gear"}};
    int index = 0;
    for (const auto& row : rows) {
        EXPECT_EQ(row.type.which(), index++);
        const AssessmentTypeException failure(row.type);
        EXPECT_EQ(failure.getRHSTypeName(), row.name);
        EXPECT_EQ(failure.GetID(), "quillet:assessments:UnaryTypeError");
        EXPECT_NE(std::string(failure.what()).find("'" + row.name + "'"), std::string::npos);
    }
}

TEST(AssessmentBinaryTypeException, NamesTheLeftTypeFirst) {
    const AssessmentBinaryTypeException failure(tag<std::int8_t>(), tag<double>());
    EXPECT_EQ(failure.GetID(), "quillet:assessments:BinaryTypeError");
    EXPECT_EQ(failure.getLHSTypeName(), "int8");
    EXPECT_EQ(failure.getRHSTypeName(), "double");
    const std::string text = failure.what();
    EXPECT_LT(text.find("int8"), text.find("double"));
}

}  // namespace
}  // namespace vorm::assessments
