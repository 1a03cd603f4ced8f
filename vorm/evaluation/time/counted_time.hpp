#pragma once

#include <vorm/evaluation/time/time_unit.hpp>

#include <optional>
#include <string_view>

namespace vorm::evaluation {

/// The time from 1970-01-01 on that a spreadsheet counts as that decimal number of days from
/// 1899-12-30 on: `43374.42`. Nothing for a text that is no number. Spreadsheets differ for days
/// before 1900-03-01, number 61: some count a 29th of February 1900 and begin a day later.
std::optional<ExactTime> timeOfSerialDate(std::string_view days);

/// The unit, of s, ms, us and ns, in which a number counts from 1970-01-01 on, told by its
/// magnitude; it is given as though it were seconds. In each unit these are the times from
/// 2001-09-09 to 2286-11-20, and nothing for any other number.
std::optional<TimeUnit> epochUnitOf(ExactTime asSeconds);

}  // namespace vorm::evaluation
