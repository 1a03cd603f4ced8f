#pragma once

// Texts, lists of them and keys as TOML writes them; included by the sources of this folder only.

#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation::detail {

std::string tomlText(std::string_view text);

/// A key, in quotes where it needs them.
std::string tomlKey(const std::string& name);

/// A list, or the text itself where it is the only one.
std::string tomlList(const std::vector<std::string>& texts);

}  // namespace vorm::evaluation::detail
