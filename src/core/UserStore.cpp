#include "core/UserStore.h"

#include <algorithm>

namespace nutrovex {

namespace {

bool dayBefore(const CalendarDate& a, const CalendarDate& b) {
    if (a.year != b.year) {
        return a.year < b.year;
    }
    if (a.month != b.month) {
        return a.month < b.month;
    }
    return a.day < b.day;
}

}  // namespace

UserStore::UserStore(const Clock& clock) : m_clock(&clock) {
    reset();
}

void UserStore::reset(bool keepProfile) {
    const CalendarDate now = today();
    header.word = 0;
    if (!keepProfile) {
        profile.reset(now);
    }
    dayCount = 0;
    firstDayChunk = 3;
    m_days.clear();
}

Position UserStore::insertDay(std::unique_ptr<DayRecord> day) {
    if (m_days.size() >= kNoPosition || !day) {
        return kNoPosition;
    }
    // Binary search: the list is always in date order, and twenty years of days load fast.
    const auto it =
        std::upper_bound(m_days.begin(), m_days.end(), day->date(),
                         [](const CalendarDate& d, const std::unique_ptr<DayRecord>& r) {
                             return dayBefore(d, r->date());
                         });
    const auto pos = static_cast<Position>(it - m_days.begin());
    m_days.insert(it, std::move(day));
    dayCount = static_cast<uint16_t>(dayCount + 1);
    return pos;
}

Position UserStore::findDay(const CalendarDate& date) const {
    const auto it = std::lower_bound(m_days.begin(), m_days.end(), date,
                                     [](const std::unique_ptr<DayRecord>& r,
                                        const CalendarDate& d) { return dayBefore(r->date(), d); });
    if (it == m_days.end() || dayBefore(date, (*it)->date())) {
        return kNoPosition;
    }
    return static_cast<Position>(it - m_days.begin());
}

DayRecord* UserStore::dayOf(const CalendarDate& date) {
    const Position pos = findDay(date);
    return pos == kNoPosition ? nullptr : m_days[pos].get();
}

bool UserStore::removeDay(Position pos) {
    if (pos >= m_days.size()) {
        return false;
    }
    m_days.erase(m_days.begin() + pos);
    if (dayCount > 0) {
        --dayCount;
    }
    return true;
}

void UserStore::removeAllDays() {
    m_days.clear();
    dayCount = 0;
}

}  // namespace nutrovex
