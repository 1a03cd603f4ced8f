#include "time_finding.hpp"

#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/time/likely_format.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <algorithm>
#include <iterator>
#include <optional>

namespace vorm::evaluation {
namespace {

constexpr const char* timeAdvice = "name it in the assessment file: [recording] time = \"...\"";

std::vector<std::string> namesOf(const std::vector<ColumnHeader>& headers) {
    std::vector<std::string> names;
    for (const ColumnHeader& header : headers) {
        if (!header.name.empty()) {
            names.push_back(header.name);
        }
    }
    return names;
}

std::vector<std::size_t> columnsCalled(const std::string& name,
                                       const std::vector<ColumnHeader>& headers,
                                       const SourceLocation& place) {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < headers.size(); ++i) {
        if (headers[i].isCalled(name)) {
            columns.push_back(i);
        }
    }
    if (columns.empty()) {
        failAt(place, "has no column " + shown(name) + " for the time",
               suggestion(name, namesOf(headers)));
    }
    return columns;
}

// Each of them is the time of the columns to its right.
std::vector<TimeCells> timesOfTheirOwn(const std::vector<std::size_t>& columns,
                                       const std::vector<ColumnHeader>& headers,
                                       const SourceLocation& place) {
    if (columns.size() > 1 && columns.front() > 0 && columns.back() + 1 == headers.size()) {
        failAt(place,
               "has a column " + shown(headers[columns.back()].text) +
                   " behind all others: it cannot be told whose times each is",
               "times stand to the left of their values");
    }
    std::vector<TimeCells> times;
    for (const std::size_t column : columns) {
        times.push_back({{column}});
    }
    return times;
}

// How the times of a column go on from row to row.
struct Course {
    bool isTime = false;        // every cell that is not empty is one, and there are such
    bool isOther = false;       // some cell is none
    bool beginsAsTime = false;  // the first cells are dates or clocks
    std::size_t steps = 0;      // to later times
    bool repeats = false;       // at some row
    bool goesBack = false;      // at some row
    bool isNumber = false;      // every cell is
    bool isDate = false;        // days without a time of day
    bool isTimeOfDay = false;   // or an elapsed time

    bool mayBeTimes() const { return isTime && steps > 0 && !goesBack; }
    // Numbers that have another name often increase; times do at every row.
    bool areSurelyTimes() const { return mayBeTimes() && (!isNumber || (steps > 1 && !repeats)); }
};

class Columns {
public:
    Columns(const std::vector<ColumnHeader>& headers, const CellTexts& rows,
            const SourceLocation& place)
        : headers_(headers), rows_(rows), place_(place) {}

    std::vector<TimeCells> find() const {
        for (const TimeName likeness : {TimeName::Time, TimeName::Usual, TimeName::Some}) {
            if (auto named = namedLike(likeness); !named.empty()) {
                return ofNames(likeness == TimeName::Time ? withoutTemperatures(std::move(named))
                                                          : std::move(named));
            }
        }
        return {withMilliseconds({{theOneThatIncreases()}})};
    }

private:
    std::vector<std::size_t> namedLike(TimeName likeness) const {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < headers_.size(); ++i) {
            if (timeNameOf(headers_[i]) == likeness && isTimeEnough(i, likeness)) {
                found.push_back(i);
            }
        }
        return found;
    }

    // A `T` is a temperature where others are called like times. Where these may be the time or
    // not, it is one of several that may be, and so is a `t`.
    std::vector<std::size_t> withoutTemperatures(std::vector<std::size_t> columns) const {
        const auto mayBeTemperature = [this](std::size_t column) {
            return headers_[column].name.size() == 1 && !timeUnitIn(headers_[column]) &&
                   courseOf(column).isNumber;
        };
        if (!std::all_of(columns.begin(), columns.end(), mayBeTemperature)) {
            std::erase_if(columns, [&](std::size_t column) {
                return headers_[column].name == "T" && mayBeTemperature(column);
            });
            return columns;
        }
        for (const std::size_t column : namedLike(TimeName::Usual)) {
            if (courseOf(column).mayBeTimes()) {
                columns.push_back(column);
            }
        }
        std::sort(columns.begin(), columns.end());
        return columns;
    }

    // The less a name says, the more the cells have to.
    bool isTimeEnough(std::size_t column, TimeName likeness) const {
        if (likeness == TimeName::Time || rows_.empty()) {
            return true;
        }
        const Course course = courseOf(column);
        return likeness == TimeName::Usual
                   ? !course.isOther || course.beginsAsTime || dateOf(column)
                   : course.isTime && !course.goesBack;
    }

    std::vector<TimeCells> ofNames(std::vector<std::size_t> columns) const {
        if (columns.size() > 1 && areOfOneName(columns)) {
            return timesOfTheirOwn(columns, headers_, place_);
        }
        if (const auto pair = dateAndTime(columns)) {
            return {withMilliseconds(*pair)};
        }
        if (columns.size() > 1) {
            columns = thoseThatIncrease(columns);
        }
        if (columns.size() > 1) {
            std::vector<std::string> names;
            for (const std::size_t column : columns) {
                names.push_back(headers_[column].text);
            }
            failAt(place_, "any of " + quotedList(names) + " may be the time column", timeAdvice);
        }
        return {withMilliseconds(withDate(columns.front()))};
    }

    bool areOfOneName(const std::vector<std::size_t>& columns) const {
        return std::all_of(columns.begin(), columns.end(), [&](std::size_t column) {
            return headers_[column].text == headers_[columns.front()].text;
        });
    }

    // All of them where none does, or where no two rows tell.
    std::vector<std::size_t> thoseThatIncrease(const std::vector<std::size_t>& columns) const {
        std::vector<std::size_t> found;
        std::copy_if(columns.begin(), columns.end(), std::back_inserter(found),
                     [&](std::size_t column) { return courseOf(column).mayBeTimes(); });
        return found.empty() ? columns : found;
    }

    std::optional<TimeCells> dateAndTime(const std::vector<std::size_t>& columns) const {
        if (columns.size() != 2) {
            return std::nullopt;
        }
        for (const auto& [date, time] :
             {std::pair(columns[0], columns[1]), std::pair(columns[1], columns[0])}) {
            if (courseOf(date).isDate && isTimeOfDay(time, date)) {
                return TimeCells{{date, time}};
            }
        }
        return std::nullopt;
    }

    // With the column to the right of the time where that has what the time lacks.
    TimeCells withMilliseconds(TimeCells cells) const {
        const std::size_t next = cells.columns.back() + 1;
        if (next < headers_.size() && isCalledLikeMilliseconds(headers_[next])) {
            TimeCells finer{cells.columns, true};
            finer.columns.push_back(next);
            // A column `ms` is the duration of something, unless the times alone repeat.
            const bool isSure = headers_[next].name != "ms" || courseOf(cells).repeats;
            if (isSure && !commonNotations(rows_, finer).empty() && !courseOf(finer).goesBack) {
                return finer;
            }
        }
        return cells;
    }

    TimeCells withDate(std::size_t column) const {
        if (const auto date = dateOf(column)) {
            return {{*date, column}};
        }
        if (courseOf(column).isTimeOfDay) {
            refuseDatesBeside(column);
        }
        return {{column}};
    }

    // Dates that cannot be read would be lost, and with them the days between times of day.
    void refuseDatesBeside(std::size_t column) const {
        for (std::size_t i = 0; i < headers_.size(); ++i) {
            const std::string text = i == column ? "" : firstTextIn(i);
            if (!text.empty() && isCalledLikeDate(headers_[i])) {
                failAt(place_,
                       shown(text) + " in the column " + shown(headers_[i].text) +
                           " beside the times in " + shown(headers_[column].text) +
                           " is no date that can be told",
                       "say how both are written: [recording] time = [\"" + headers_[i].text +
                           "\", \"" + headers_[column].text + "\"] and time_format = \"" +
                           likelyFormat(text + ' ' + firstTextIn(column), ShortDate::DayFirst)
                               .value_or("%d.%m.%y %H:%M:%S") +
                           "\"; or that the times stand alone: time = \"" + headers_[column].text +
                           "\"");
            }
        }
    }

    std::string firstTextIn(std::size_t column) const {
        for (const auto& row : rows_) {
            if (column < row.size() && !row[column].empty()) {
                return row[column];
            }
        }
        return {};
    }

    // The one column of dates, of which the column may have the times of day.
    std::optional<std::size_t> dateOf(std::size_t column) const {
        std::vector<std::size_t> dates;
        for (std::size_t i = 0; i < headers_.size(); ++i) {
            if (i != column && courseOf(i).isDate) {
                dates.push_back(i);
            }
        }
        return dates.size() == 1 && isTimeOfDay(column, dates.front())
                   ? std::optional(dates.front())
                   : std::nullopt;
    }

    // Hours and minutes, `09:39`, are a time only behind a date.
    bool isTimeOfDay(std::size_t column, std::size_t date) const {
        const Course course = courseOf(column);
        return course.isTimeOfDay ||
               (course.isOther && !commonNotations(rows_, {{date, column}}).empty());
    }

    // Dates and clocks are the time before any numbers are.
    std::size_t theOneThatIncreases() const {
        std::vector<std::size_t> found = thoseOfSureTimes(false);
        if (found.empty()) {
            found = thoseOfSureTimes(true);
        }
        if (found.size() == 1) {
            return found.front();
        }
        if (std::none_of(headers_.begin(), headers_.end(), [](const ColumnHeader& header) {
                return kindOf(header.text) == CellKind::Text;
            })) {
            failAt(place_, "has values where the names of columns should be",
                   R"(name them: [recording] names = ["time", "..."])");
        }
        std::vector<std::string> names;
        for (const std::size_t column : found) {
            names.push_back(headers_[column].text);
        }
        failAt(place_,
               found.empty() ? "has no time column among " + quotedList(namesOf(headers_))
                             : "any of " + quotedList(names) + ", which increase, may be the time",
               timeAdvice);
    }

    std::vector<std::size_t> thoseOfSureTimes(bool areNumbers) const {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < headers_.size(); ++i) {
            const Course course = courseOf(i);
            if (course.isNumber == areNumbers && course.areSurelyTimes() &&
                mayNameTimes(headers_[i], course)) {
                found.push_back(i);
            }
        }
        return found;
    }

    // Numbers and times in the header are those of a first row that has none above it.
    static bool mayNameTimes(const ColumnHeader& header, const Course& course) {
        const bool hasOtherUnit = course.isNumber && !header.unit.empty() && !timeUnitIn(header);
        return kindOf(header.text) == CellKind::Text && !hasOtherUnit && !isCalledLikeCount(header);
    }

    Course courseOf(std::size_t column) const { return courseOf(TimeCells{{column}}); }

    Course courseOf(const TimeCells& cells) const {
        const auto notations = commonNotations(rows_, cells);
        Course course;
        std::optional<ExactTime> last;
        for (const auto& row : rows_) {
            const std::string text = joined(row, cells);
            if (text.empty()) {
                continue;
            }
            const auto time = timeOf(text, notations);
            course.isTime = time.has_value();
            course.isOther = !time;
            if (!time) {
                course.beginsAsTime = !notations.empty();
                return course;
            }
            course.steps += last && *time > *last ? 1U : 0U;
            course.repeats = course.repeats || (last && *time == *last);
            course.goesBack = course.goesBack || (last && *time < *last);
            last = time;
        }
        const bool isClock = !notations.empty() && notations.front() == TimeNotation::Clock;
        course.isNumber = course.isTime && notations.empty();
        course.isTimeOfDay = course.isTime && isClock;
        course.isDate = course.isTime && !notations.empty() && !isClock && areDays(cells);
        return course;
    }

    static std::optional<ExactTime> timeOf(std::string_view text,
                                           const std::vector<TimeNotation>& notations) {
        if (notations.empty()) {
            return ExactTime::of(text, second);
        }
        const auto time = read(text, notations.front());
        return time ? std::optional(time->time) : std::nullopt;
    }

    bool areDays(const TimeCells& cells) const {
        return std::all_of(rows_.begin(), rows_.end(), [&](const auto& row) {
            return joined(row, cells).find(':') == std::string::npos;
        });
    }

    const std::vector<ColumnHeader>& headers_;
    const CellTexts& rows_;
    const SourceLocation& place_;
};

}  // namespace

std::vector<TimeCells> findTimes(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                                 const CellTexts& rows, const SourceLocation& place) {
    if (layout.columns.empty()) {
        return Columns(headers, rows, place).find();
    }
    if (layout.columns.size() == 1) {
        return timesOfTheirOwn(columnsCalled(layout.columns.front(), headers, place), headers,
                               place);
    }
    TimeCells cells;
    for (const std::string& name : layout.columns) {
        cells.columns.push_back(columnsCalled(name, headers, place).front());
    }
    cells.endInMilliseconds = isCalledLikeMilliseconds(headers[cells.columns.back()]);
    return {cells};
}

void addMilliseconds(std::string& time, std::string_view cell) {
    const std::size_t digits = std::min(cell.find('.'), cell.size());
    if (digits == 0 || digits > 3) {
        time += cell.empty() ? " without milliseconds" : ' ' + std::string(cell);
        return;
    }
    std::string fraction = '.' + std::string(3 - digits, '0');
    fraction += cell.substr(0, digits);
    fraction += cell.substr(std::min(digits + 1, cell.size()));
    const std::size_t last = time.rfind(' ');
    const bool endsInHalf = last != std::string::npos && isLetter(time[last + 1]);
    time.insert(endsInHalf ? last : time.size(), fraction);
}

std::string joined(const std::vector<std::string>& row, const TimeCells& cells) {
    std::string text;
    join(
        cells, [&](std::size_t cell) { return cell < row.size() ? row[cell] : std::string_view(); },
        text);
    return text;
}

std::vector<TimeNotation> commonNotations(const CellTexts& rows, const TimeCells& cells) {
    std::optional<std::vector<TimeNotation>> common;
    for (const auto& row : rows) {
        const std::string text = joined(row, cells);
        if (text.empty()) {
            continue;
        }
        const auto notations = notationsOf(text);
        if (!common) {
            common = notations;
        } else if (notations.empty()) {
            continue;
        }
        std::erase_if(*common, [&](TimeNotation notation) {
            return std::find(notations.begin(), notations.end(), notation) == notations.end();
        });
        if (common->empty()) {
            break;
        }
    }
    return common.value_or(std::vector<TimeNotation>());
}

}  // namespace vorm::evaluation
