#pragma once

// What the header of a column says.

#include <vorm/evaluation/time/time_unit.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

struct ColumnHeader {
    std::string text;  ///< as it stands
    std::string name;  ///< without the unit
    std::string unit;  ///< that stands in brackets or parentheses at the end; or empty

    bool isCalled(std::string_view other) const { return other == name || other == text; }
};

/// One for each text. Where units are all that tells two columns apart, they stay in the names.
std::vector<ColumnHeader> columnHeaders(const std::vector<std::string>& texts);

/// The unit of a time column: in brackets, `time [ms]`, or after an underscore, `t_us`.
std::optional<TimeUnit> timeUnitIn(const ColumnHeader& header);

/// Whether the column is called time, timestamp, t or alike, whatever its case and unit.
bool isCalledLikeTime(const ColumnHeader& header);

}  // namespace vorm::evaluation
