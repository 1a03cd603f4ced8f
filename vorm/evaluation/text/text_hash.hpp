#pragma once

// For maps whose keys are texts: looks up a view without making a text of it.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vorm::evaluation {

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

template <class Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

}  // namespace vorm::evaluation
