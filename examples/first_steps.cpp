#include <vorm/assessments.hpp>

#include <iostream>

using namespace vorm::assessments;

int main() {
    TimedTrace_T<double> speed(INTERPOLATION_METHOD::LINEAR, 0);
    speed.push_back({0, 30});
    speed.push_back({10, 70});
    speed.push_back({20, 70});
    speed.push_back({30, 30});

    const auto slow = speed.combine<bool>(TimedTrace_T<double>(50), ValueLessEq());
    for (const auto& interval : slow.getErrorIntervalList()) {
        std::cout << "too fast from " << interval[0] << " s to " << interval[1] << " s\n";
    }
    for (const auto& interval : slow.Eventually(0, 8).getErrorIntervalList()) {
        std::cout << "not slow again within 8 s: " << interval[0] << " s to " << interval[1]
                  << " s\n";
    }
}
