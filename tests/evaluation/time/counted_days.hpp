#pragma once

// Days told by counting them, one year, one month and one day after the other.

namespace vorm::test {

struct Date {
    int year;
    int month;
    int day;
};

inline bool isLeapYear(int year) {
    return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
}

inline int daysOf(int year, int month) {
    switch (month) {
        case 2:
            return isLeapYear(year) ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        default:
            return 31;
    }
}

inline bool isDate(const Date& date) {
    return date.year >= 1 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= daysOf(date.year, date.month);
}

inline Date dayAfter(Date date) {
    if (date.day < daysOf(date.year, date.month)) {
        return {date.year, date.month, date.day + 1};
    }
    return date.month < 12 ? Date{date.year, date.month + 1, 1} : Date{date.year + 1, 1, 1};
}

inline int daysSince1970(const Date& date) {
    int days = 0;
    for (int year = 1970; year < date.year; ++year) {
        days += isLeapYear(year) ? 366 : 365;
    }
    for (int year = date.year; year < 1970; ++year) {
        days -= isLeapYear(year) ? 366 : 365;
    }
    for (int month = 1; month < date.month; ++month) {
        days += daysOf(date.year, month);
    }
    return days + date.day - 1;
}

}  // namespace vorm::test
