#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// Whether the cells under a header look like the units of its columns: texts of which at least
/// half stand in brackets or are units that people measure in, by their signs or their names, and
/// none of the others is called like a time.
bool isUnitRow(const std::vector<std::string>& cells);

/// The unit without the brackets around it.
std::string unitIn(std::string_view cell);

}  // namespace vorm::evaluation
