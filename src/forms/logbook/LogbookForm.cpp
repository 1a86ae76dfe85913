#include "forms/logbook/LogbookForm.h"

#include "core/DayRecord.h"
#include "core/UserStore.h"

namespace nutrovex {

namespace {

// What a command that moved or changed the days reports: the data to save, and a redraw.
constexpr Notices kMoved{.userData = true, .dataChanged = true};

}  // namespace

bool LogbookForm::userOpen() const {
    return !m_days->store().dataFilePath.empty();
}

LogbookView LogbookForm::view() {
    LogbookView v;
    v.userOpen = userOpen();
    v.date = m_days->currentDate();
    if (!v.userOpen) {
        return v;
    }
    const DayRecord* day = m_days->currentDay();
    v.figures = logbookFigures(m_days->currentDate(), day, m_days->store().profile,
                               m_days->currentFound(), m_days->currentIndex(), m_days->count());
    v.water = day != nullptr ? static_cast<int16_t>(day->water()) : 0;
    v.glance = dayGlance(v.date, day, m_days->store().profile, m_targets, clock().now());
    return v;
}

Outcome LogbookForm::edit(Field field, std::string_view text) {
    if (field != Field::Water || !userOpen()) {
        return {};
    }
    unsigned value = 0;
    for (std::size_t i = 0; i < text.size() && i < kWaterMaxChars; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            break;
        }
        value = value * 10 + static_cast<unsigned>(text[i] - '0');
    }
    bool created = false;
    if (DayRecord* day = m_days->ensureCurrentRecord(&created)) {
        day->setWater(static_cast<uint16_t>(value));
    }
    return {.notices = {.userData = true, .dayCreated = created}};
}

Outcome LogbookForm::pickDate(Field field, const CalendarDate& date) {
    if (field != Field::Date || !userOpen()) {
        return {};
    }
    m_days->setCurrentDate(date);
    return {.notices = kMoved};
}

std::optional<ScreenMessage> LogbookForm::confirmation(Command id) {
    switch (id) {
        case Command::DeleteCurrentDay:
            return ScreenMessage{"Are you sure you want to delete current day?", "Current Day",
                                 MessageKind::Question};
        case Command::DeleteAllDays:
            return ScreenMessage{"Are you sure you want to delete all days?", "All Days",
                                 MessageKind::Question};
        default:
            return std::nullopt;
    }
}

Outcome LogbookForm::command(Command id) {
    if (!userOpen()) {
        return {};
    }
    switch (id) {
        case Command::Previous:
            m_days->previousDay();
            break;
        case Command::Next:
            m_days->nextDay();
            break;
        case Command::First:
            m_days->first();
            break;
        case Command::Last:
            m_days->last();
            break;
        case Command::Today:
            m_days->setCurrentDate(clock().now());
            break;
        case Command::DeleteCurrentDay:
            m_days->deleteCurrentDay();
            break;
        case Command::DeleteAllDays:
            m_days->deleteAllDays(true);
            break;
    }
    return {.notices = kMoved};
}

}  // namespace nutrovex
