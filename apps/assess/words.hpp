#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace assess {

/// `a|b` for a, b and the separator `|`.
std::string joined(const std::vector<std::string>& words, std::string_view separator);

/// What stands between separators: at least one word, which may be empty.
std::vector<std::string> split(const std::string& text, char separator);

}  // namespace assess
