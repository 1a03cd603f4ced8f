#pragma once

#include <string_view>

namespace vorm::evaluation {

/// Whether one name comes before another one as people count: `run2` before `run10`. Digits that
/// stand side by side are a number, of equal ones that with fewer zeros in front comes first; other
/// characters are compared by their bytes.
bool isNaturallyBefore(std::string_view one, std::string_view other);

}  // namespace vorm::evaluation
