// Assesses the requirement "speed <= limit" on a recording, or on a simulated drive.

#include "simulated_drive.hpp"
#include "two_columns.hpp"

#include <vorm/assessments.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace vorm::assessments;

enum ExitCode { passed = 0, failed = 1, wrongUsage = 2, unusableInput = 3 };

struct Task {
    std::vector<TimedPoint<double>> samples;
    double limit;
};

std::optional<double> parseLimit(std::string_view text) {
    double limit = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(limit) ? std::optional(limit) : std::nullopt;
}

// The shortest digits that name this very number.
std::string digits(double number) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

TimedTrace_T<double> heldTrace(const std::vector<TimedPoint<double>>& samples) {
    TimedTrace_T<double> trace(INTERPOLATION_METHOD::ZOH, 0);
    for (const TimedPoint<double>& sample : samples) {
        trace.push_back(sample);
    }
    return trace;
}

ExitCode assess(const Task& task) {
    const TimedTrace_T<double> limit(task.limit);
    const auto holds = heldTrace(task.samples).combine<bool>(limit, ValueLessEq());
    const auto failures = holds.getErrorIntervalList();

    std::cout << "speed <= " << digits(task.limit) << ": " << (failures.empty() ? "PASS" : "FAIL")
              << '\n';
    for (const auto& interval : failures) {
        std::cout << "  fails from " << digits(interval[0]) << " s to " << digits(interval[1])
                  << " s\n";
    }
    return failures.empty() ? passed : failed;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    try {
        if (argumentCount == 1) {
            return assess({example::simulatedDrive(), 20});
        }
        const auto limit = argumentCount == 3 ? parseLimit(arguments[2]) : std::nullopt;
        if (!limit) {
            std::cerr << "usage: speed_limit [CSV LIMIT]\n"
                         "CSV has a header line and the columns time and speed, LIMIT is a number; "
                         "without them a drive is simulated.\n";
            return wrongUsage;
        }
        return assess({example::readTwoColumns(arguments[1]), *limit});
    } catch (const example::InputError& failure) {
        std::cerr << failure.what() << '\n';
        return unusableInput;
    }
}
