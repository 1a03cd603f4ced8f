#include "value_traits.hpp"

#include <stdexcept>
#include <string>

namespace vorm::assessments {
namespace {

[[noreturn]] void refuse(const std::string& operation) {
    throw std::runtime_error("Unsupported operator '" + operation + "' for type resultType_t");
}

}  // namespace

Verdict operator+(const Verdict&, const Verdict&) {
    refuse("+");
}
Verdict operator-(const Verdict&, const Verdict&) {
    refuse("-");
}
Verdict operator*(const Verdict&, const Verdict&) {
    refuse("*");
}
Verdict operator-(const Verdict&) {
    refuse("-");
}

template <>
Verdict ZERO<Verdict>() {
    refuse("ZERO");
}

template <>
ValueType<FixedPoint> ZERO<ValueType<FixedPoint>>() {
    return ValueType<FixedPoint>(FixedPoint::zero());
}

namespace detail {

double fixedPointToDouble(const ValueType<FixedPoint>& value) {
    return value.get().toDouble();
}

ValueType<FixedPoint> fixedPointFromDouble(double number, const ValueType<FixedPoint>& like) {
    return ValueType<FixedPoint>(FixedPoint::fromDouble(number, like.get()));
}

}  // namespace detail
}  // namespace vorm::assessments
