#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/UserStore.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

inline CalendarDate dmy(int d, int m, int y) {
    return CalendarDate::fromDmy(d, m, y);
}

// A user store on a fixed "today" of 21 November 2002, with a cursor on it.
class LogbookFixture : public ::testing::Test {
protected:
    LogbookFixture() : clock(dmy(21, 11, 2002)), store(clock), cursor(store) {
        store.dataFilePath = "/nonexistent/Users/Ann/UserDB.ddb";  // a user is open
    }

    DayRecord& addDay(int d, int m, int y) {
        const Position at = store.insertDay(std::make_unique<DayRecord>(dmy(d, m, y)));
        return store.dayAt(at);
    }

    [[nodiscard]] bool currentIs(int d, int m, int y) const {
        const CalendarDate& c = cursor.currentDate();
        return c.day == d && c.month == m && c.year == y;
    }

    FixedClock clock;
    UserStore store;
    DayCursor cursor;
};

}  // namespace nutrovex
