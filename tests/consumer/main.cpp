#include <vorm/assessments.hpp>

#include <iostream>
#include <type_traits>
#include <vector>

namespace va = vorm::assessments;

namespace {

va::TimedTrace_T<double> heldTrace(const std::vector<va::TimedPoint<double>>& samples) {
    va::TimedTrace_T<double> trace(va::INTERPOLATION_METHOD::ZOH, 0);
    for (const auto& sample : samples) {
        trace.push_back(sample);
    }
    return trace;
}

// Every value type's trace must be there to link with.
template <class T>
void tryOut(const T& value) {
    va::TimedTrace_T<T> trace(va::INTERPOLATION_METHOD::ZOH, 0);
    trace.push_back({1, value});
    trace.lastKnownTime = 2;
    if (trace.Shift(1, false).valueAt(1) != value) {
        std::cout << "no value for the type of tag " << trace.errorType().which() << '\n';
    }
}

template <class T>
T example() {
    if constexpr (std::is_same_v<T, va::Verdict>) {
        return T(va::resultEnum_t::PASS);
    } else {
        return va::ZERO<T>();
    }
}

}  // namespace

int main() {
#define VORM_VALUE_TYPE(T) tryOut(example<T>());
#include <vorm/assessments/value_types.def>

    const auto left = heldTrace({{0, 1}, {2, 4}, {6, 0}});
    const auto right = heldTrace({{0, 2}, {4, 8}, {6, 8}});
    const auto near =
        left.combine<bool>(right, [](double a, double b) { return a - b < 3 && b - a < 3; });
    const auto sum = left.combine<double>(right, [](double a, double b) { return a + b; });
    const auto greater = sum.combine<bool>(va::TimedTrace_T<double>(3), va::ValueGreater());

    for (const auto& interval : near.getErrorIntervalList()) {
        std::cout << "near fails in " << interval[0] << " to " << interval[1] << '\n';
    }
    for (const auto& interval : greater.Eventually(0, 1).getErrorIntervalList()) {
        std::cout << "greater fails in " << interval[0] << " to " << interval[1] << '\n';
    }
    try {
        near.Add(near);
    } catch (const va::AssessmentBinaryTypeException& failure) {
        std::cout << failure.GetID() << '\n';
    }
}
