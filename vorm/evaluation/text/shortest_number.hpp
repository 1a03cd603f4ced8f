#pragma once

#include <string>

namespace vorm::evaluation {

/// The shortest decimal text that reads back as the same double: `0.1`, `12.44801936033764`,
/// `1e+300`, `inf`, `nan`; minus zero is `-0`.
std::string shortestNumber(double number);

}  // namespace vorm::evaluation
