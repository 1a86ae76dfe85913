#include "core/CalendarDate.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace nutrovex {

const char* const kMonthNames[12] = {"January",   "February", "March",    "April",
                                     "May",       "June",     "July",     "August",
                                     "September", "October",  "November", "December"};
const char* const kWeekdayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday"};

namespace {

struct Fields {
    int day;
    int month;
    int year7;
};

Fields split(uint16_t packed) {
    return {packed >> 11, (packed >> 7) & 0xF, packed & 0x7F};
}

uint16_t join(Fields f) {
    return static_cast<uint16_t>(((f.day & 0x1F) << 11) | ((f.month & 0xF) << 7) |
                                 (f.year7 & 0x7F));
}

bool leap(int year7) {
    return isLeapYearNumber(year7 + 1904);
}

uint16_t forwardOne(uint16_t packed) {
    Fields f = split(packed);
    switch (f.month) {
        case 1:
        case 3:
        case 5:
        case 7:
        case 8:
        case 10:
            if (f.day >= 31) {
                f.day = 1;
                ++f.month;
            } else {
                ++f.day;
            }
            break;
        case 2:
            if (f.day >= (leap(f.year7) ? 29 : 28)) {
                f.day = 1;
                f.month = 3;
            } else {
                ++f.day;
            }
            break;
        case 4:
        case 6:
        case 9:
        case 11:
            if (f.day >= 30) {
                f.day = 1;
                ++f.month;
            } else {
                ++f.day;
            }
            break;
        case 12:
            if (f.day < 31) {
                ++f.day;
            } else {
                f.day = 1;
                f.month = 1;
                f.year7 = (f.year7 + 1) & 0x7F;
            }
            break;
        default:
            return packed;
    }
    return join(f);
}

uint16_t backOne(uint16_t packed) {
    Fields f = split(packed);
    if (f.day > 1) {
        --f.day;
        return join(f);
    }
    switch (f.month) {
        case 1:
            f.day = 31;
            f.month = 12;
            f.year7 = (f.year7 - 1) & 0x7F;
            break;
        case 2:
        case 4:
        case 6:
        case 8:
        case 9:
        case 11:
            f.day = 31;
            --f.month;
            break;
        case 3:
            f.day = leap(f.year7) ? 29 : 28;
            f.month = 2;
            break;
        case 5:
        case 7:
        case 10:
        case 12:
            f.day = 30;
            --f.month;
            break;
        default:
            return packed;
    }
    return join(f);
}

}  // namespace

CalendarDate CalendarDate::fromDmy(int day, int month, int year) {
    CalendarDate d;
    d.day = static_cast<int16_t>(day);
    d.month = static_cast<int16_t>(month);
    d.year = static_cast<int16_t>(year);
    d.weekday = static_cast<int16_t>(weekdayOf(packDate(d)));
    return d;
}

CalendarDate SystemClock::now() const {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    CalendarDate d;
    d.second = static_cast<int16_t>(std::min(tm.tm_sec, 59));
    d.minute = static_cast<int16_t>(tm.tm_min);
    d.hour = static_cast<int16_t>(tm.tm_hour);
    d.day = static_cast<int16_t>(tm.tm_mday);
    d.month = static_cast<int16_t>(tm.tm_mon + 1);
    d.year = static_cast<int16_t>(tm.tm_year + 1900);
    d.weekday = static_cast<int16_t>(tm.tm_wday);
    return d;
}

uint16_t packDate(const CalendarDate& date) {
    return join({date.day, date.month, date.year + 16});
}

void unpackDate(uint16_t packed, CalendarDate& date) {
    const Fields f = split(packed);
    date.day = static_cast<int16_t>(f.day);
    date.month = static_cast<int16_t>(f.month);
    date.year = static_cast<int16_t>(f.year7 + 1904);
}

int daysInMonth(int month, int32_t year) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) {
        return 0;
    }
    return month == 2 && isLeapYearNumber(year) ? 29 : kDays[month - 1];
}

bool isLeapYear(uint16_t packed) {
    return leap(split(packed).year7);
}

int32_t dayNumber(uint16_t packed) {
    const Fields f = split(packed);
    const int32_t a = (14 - f.month) / 12;
    const int32_t y = f.year7 - a + 6704;
    return (153 * (12 * a + f.month) - 457) / 5 + f.day + 365 * y + y / 4 - 7976;
}

int32_t weekdayOf(uint16_t packed) {
    return (dayNumber(packed) - 24105) % 7;
}

bool datesEqual(const CalendarDate& a, const CalendarDate& b) {
    if (&a == &b) {
        return false;
    }
    return a.month == b.month && a.day == b.day && a.year == b.year;
}

static int compareDays(const CalendarDate& a, const CalendarDate& b) {
    if (a.year != b.year) {
        return a.year < b.year ? -1 : 1;
    }
    if (a.month != b.month) {
        return a.month < b.month ? -1 : 1;
    }
    if (a.day != b.day) {
        return a.day < b.day ? -1 : 1;
    }
    return 0;
}

bool dateEarlier(const CalendarDate& a, const CalendarDate& b) {
    return &a != &b && compareDays(a, b) < 0;
}

bool dateEarlierOrEqual(const CalendarDate& a, const CalendarDate& b) {
    return &a != &b && compareDays(a, b) <= 0;
}

bool dateLater(const CalendarDate& a, const CalendarDate& b) {
    return &a != &b && compareDays(a, b) > 0;
}

void stepDate(CalendarDate& date, CalendarDate& source, int n) {
    date = source;
    if (n == 0) {
        return;
    }
    uint16_t packed = packDate(date);
    for (int i = 0; i < n; ++i) {
        packed = forwardOne(packed);
    }
    for (int i = 0; i > n; --i) {
        packed = backOne(packed);
    }
    unpackDate(packed, date);
    source = date;
}

CalendarDate steppedDate(const CalendarDate& source, int n) {
    CalendarDate from = source;
    CalendarDate to;
    stepDate(to, from, n);
    return to;
}

std::string longDateText(const CalendarDate& date) {
    const int32_t wd = weekdayOf(packDate(date));
    const char* weekday = wd >= 0 && wd < 7 ? kWeekdayNames[wd] : "";
    const char* month = date.month >= 1 && date.month <= 12 ? kMonthNames[date.month - 1] : "";
    char text[64];
    const int n =
        std::snprintf(text, sizeof text, "%s %s %d, %d", weekday, month, date.day, date.year);
    return std::string(text, static_cast<std::size_t>(std::max(n, 0)));
}

void longDateText(const CalendarDate& date, std::span<char> buffer, uint16_t& capacity) {
    std::fill(buffer.begin(), buffer.end(), '\0');
    const std::string text = longDateText(date);
    const std::size_t room = std::min<std::size_t>(capacity, buffer.size());
    if (capacity >= text.size()) {
        std::memcpy(buffer.data(), text.data(), std::min(text.size(), buffer.size()));
        capacity = static_cast<uint16_t>(text.size());
    } else if (room > 0) {
        std::memcpy(buffer.data(), text.data(), room - 1);
    }
}

}  // namespace nutrovex
