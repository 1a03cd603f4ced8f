#include <vorm/assessments/expression/expression.hpp>

#include <gtest/gtest.h>

#include <utility>

namespace vorm::assessments {
namespace {

template <class T>
void expectToKeepItsValueWhenMovedFrom(const T& value, const T& other) {
    ValueType<T> source(value);
    const ValueType<T> made(std::move(source));
    EXPECT_EQ(source.get(), value);  // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(made.get(), value);
    EXPECT_EQ(&made.get(), &source.get());

    ValueType<T> assigned(other);
    assigned = std::move(source);
    EXPECT_EQ(source.get(), value);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(assigned, source);

    Expression literal = constantValue(1, "c", source);
    const Expression moved(std::move(literal));
    const auto& left = boost::get<constantValue>(literal);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(boost::get<ValueType<T>>(left.value), source);
    EXPECT_EQ(boost::get<ValueType<T>>(boost::get<constantValue>(moved).value), source);
}

TEST(ValueType, KeepsItsValueWhenMovedFrom) {
    expectToKeepItsValueWhenMovedFrom(FixedPoint(2.5), FixedPoint(7));
    expectToKeepItsValueWhenMovedFrom(resultEnum_t::FAIL, resultEnum_t::PASS);
}

}  // namespace
}  // namespace vorm::assessments
