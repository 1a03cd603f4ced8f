#pragma once

#include <vorm/assessments/trace/timed_point.hpp>

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace example {

/// Input that cannot be used; the text names file, line and column as far as they apply.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The rows of a comma-separated file with a header line and the columns time and value. Times
/// count from the first row and strictly increase. Throws InputError.
std::vector<vorm::assessments::TimedPoint<double>> readTwoColumns(
    const std::filesystem::path& path);

}  // namespace example
