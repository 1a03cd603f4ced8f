#pragma once

// What the header of a column says.

#include <vorm/evaluation/time/time_unit.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

struct ColumnHeader {
    std::string text;             ///< as it stands
    std::string name;             ///< without the unit
    std::string unit;             ///< that stands in brackets or parentheses at the end; or empty
    bool isOneOfSeveral = false;  ///< others have the same text

    bool isCalled(std::string_view other) const { return other == name || other == text; }
};

/// One for each text, with the unit from another line, if there are such. Where units are all that
/// tells two columns apart, they stay in the names; columns of one text are called `text#1`,
/// `text#2`.
std::vector<ColumnHeader> columnHeaders(const std::vector<std::string>& texts,
                                        const std::vector<std::string>& units = {});

/// The unit of a time column: in brackets, `time [ms]`, or after an underscore, `t_us`.
std::optional<TimeUnit> timeUnitIn(const ColumnHeader& header);

/// How much a column's name says of times.
enum class TimeName : std::uint8_t {
    None,
    Some,   ///< one of its words is time, date or alike: `Step Time`, `LogDate`
    Usual,  ///< what recordings are used to call their time: `Test_Time`, `Datum`
    Time    ///< time, timestamp, t or alike
};

/// Of the name whatever its case, without its unit.
TimeName timeNameOf(const ColumnHeader& header);

/// Whether the column is called like one of dates.
bool isCalledLikeDate(const ColumnHeader& header);

/// Whether the column is called like the milliseconds of a time in another one.
bool isCalledLikeMilliseconds(const ColumnHeader& header);

/// Whether the column is called like one that counts rows: index, row, no or alike.
bool isCalledLikeCount(const ColumnHeader& header);

}  // namespace vorm::evaluation
