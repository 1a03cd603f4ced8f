#include "simulated_drive.hpp"

namespace example {

namespace {

double wantedSpeed(double time) {
    return time < 40 || time >= 70 ? 19 : 12;
}

}  // namespace

std::vector<vorm::assessments::TimedPoint<double>> simulatedDrive() {
    constexpr double step = 0.5;
    constexpr double proportional = 0.3;
    constexpr double integral = 0.06;

    std::vector<vorm::assessments::TimedPoint<double>> points;
    double speed = 0;
    double errorSum = 0;
    for (double time = 0; time <= 120; time += step) {
        points.push_back({time, speed});
        const double error = wantedSpeed(time) - speed;
        errorSum += error * step;
        speed += (proportional * error + integral * errorSum) * step;
    }
    return points;
}

}  // namespace example
