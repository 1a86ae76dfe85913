#include "logbook/Logbook.h"

#include <cmath>
#include <cstdio>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/DayRecord.h"
#include "core/Format.h"
#include "core/UserProfile.h"
#include "logbook/WeighIn.h"

namespace nutrovex {

const char* logbookWeightUnit(bool metric) {
    return metric ? "kg" : "lbs";
}

std::string subtractedCalories(long calories) {
    return calories >= 1 ? formatText("- %ld", calories) : formatText("%ld", calories);
}

long netCalories(float mealCalories, int bmr, uint32_t exerciseCalories) {
    const auto meals = static_cast<long>(std::round(static_cast<double>(mealCalories)));
    return meals - bmr - static_cast<long>(exerciseCalories);
}

std::string netTotalText(long net) {
    return net < 0 ? formatText("- %ld", -net) : formatText("%ld", net);
}

std::string goalLine(const UserProfile& profile) {
    const GoalPlan& plan = profile.plan();
    const auto days = planDays(plan);
    const auto change = planWeightChange(plan);
    const auto perDay = planCaloriesPerDay(plan);
    if (!days || !change || !perDay) {
        return {};
    }
    // A planned deficit shows negative, the sign of the total above it.
    return formatText("Goal: %ld cal", -static_cast<long>(*perDay));
}

LogbookFigures logbookFigures(const CalendarDate& date, const DayRecord* day,
                              const UserProfile& profile, bool found, Position index,
                              uint16_t count) {
    LogbookFigures f;
    f.date = longDateText(date);
    const char* unit = logbookWeightUnit(profile.metric());
    const WholeResult weight =
        day != nullptr ? dayWeightToWhole(day->weight(), profile.metric()) : WholeResult{};
    f.weight = day != nullptr && weight.value >= 1 ? formatText("%d  %s", weight.value, unit)
                                                   : formatText("---  %s", unit);
    if (day != nullptr) {
        // Halves away from zero, as the net total below rounds them (printf would round to even).
        f.meals = formatText("%1.0f", std::round(static_cast<double>(day->totals()[0])) + 0.0);
        f.bmr = subtractedCalories(day->bmr());
        f.exercise = subtractedCalories(static_cast<long>(day->exerciseCalories));
        f.total = netTotalText(netCalories(day->totals()[0], day->bmr(), day->exerciseCalories));
        f.water = formatText("%d", static_cast<int>(static_cast<int16_t>(day->water())));
    } else {
        f.meals = "0";
        f.bmr = "0";
        f.exercise = "0";
        f.total = "0";
        f.water = "0";
    }
    f.record = found ? formatText("Record: %d of %d", index + 1, static_cast<int>(count))
                     : formatText("Record: -- of %d", static_cast<int>(count));
    f.goal = goalLine(profile);
    return f;
}

DayRange::DayRange(const CalendarDate& today) : m_start(today), m_end(steppedDate(today, 1)) {}

void DayRange::setStart(const CalendarDate& date) {
    m_start = date;
    m_end = steppedDate(m_start, 1);
}

void DayRange::setEnd(const CalendarDate& date) {
    m_end = date;
    if (dateEarlierOrEqual(m_end, m_start)) {
        m_end = steppedDate(m_start, 1);
    }
}

bool Logbook::userOpen() const {
    return !m_days->store().dataFilePath.empty();
}

std::optional<LogbookFigures> Logbook::figures() {
    if (!userOpen()) {
        return std::nullopt;
    }
    const DayRecord* day = m_days->currentDay();
    return logbookFigures(m_days->currentDate(), day, m_days->store().profile,
                          m_days->currentFound(), m_days->currentIndex(), m_days->count());
}

Notices Logbook::moved() {
    return Notices{.userData = true, .dataChanged = true};
}

Notices Logbook::previous() {
    if (!userOpen()) {
        return {};
    }
    m_days->previousDay();
    return moved();
}

Notices Logbook::next() {
    if (!userOpen()) {
        return {};
    }
    m_days->nextDay();
    return moved();
}

Notices Logbook::first() {
    if (!userOpen()) {
        return {};
    }
    m_days->first();
    return moved();
}

Notices Logbook::last() {
    if (!userOpen()) {
        return {};
    }
    m_days->last();
    return moved();
}

Notices Logbook::pickDate(const CalendarDate& date) {
    if (!userOpen()) {
        return {};
    }
    m_days->setCurrentDate(date);
    return moved();
}

ScreenMessage Logbook::confirmDeleteCurrentDay() {
    return {"Are you sure you want to delete current day?", "Current Day", MessageKind::Question};
}

Notices Logbook::deleteCurrentDay() {
    if (!userOpen()) {
        return {};
    }
    m_days->deleteCurrentDay();
    return moved();
}

Notices Logbook::deleteRange(const DayRange& range) {
    if (!userOpen()) {
        return {};
    }
    m_days->deleteRange(range.start(), range.end());
    return moved();
}

ScreenMessage Logbook::confirmDeleteAllDays() {
    return {"Are you sure you want to delete all days?", "All Days", MessageKind::Question};
}

Notices Logbook::deleteAllDays() {
    if (!userOpen()) {
        return {};
    }
    m_days->deleteAllDays(true);
    return moved();
}

Notices Logbook::waterChanged(bool editModified, std::string_view text) {
    if (!userOpen() || !editModified) {
        return {};
    }
    unsigned value = 0;
    for (std::size_t i = 0; i < text.size() && i < kWaterMaxChars; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            break;
        }
        value = value * 10 + static_cast<unsigned>(text[i] - '0');
    }
    Notices n;
    bool created = false;
    if (DayRecord* day = m_days->ensureCurrentRecord(&created)) {
        day->setWater(static_cast<uint16_t>(value));
    }
    n.dayCreated = created;
    n.userData = true;
    return n;
}

}  // namespace nutrovex
