// What most sources of the libraries include, compiled once for each of them. No source relies on
// it: each includes what it uses.

#include <vorm/assessments/facade/timed_trace.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>
