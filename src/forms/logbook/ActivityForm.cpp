#include "forms/logbook/ActivityForm.h"

#include "core/CalendarDate.h"

#include "calc/Bmr.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {

const char* const kActivityQuestion =
    "Excluding exercise, how would you describe your activity level today?";
const char* const kBmrOptionsAdvice =
    "BMR options are available when you input personal information and enter a daily weight.";

ActivityView ActivityForm::view() const {
    const UserProfile& profile = m_days->store().profile;
    ActivityView v;
    v.date = longDateText(m_days->currentDate());
    const DayRecord* day = m_days->currentRecord();
    if (day == nullptr) {
        v.level = profile.defaultLevel() <= kLevelManual ? profile.defaultLevel() : 0;
        return v;
    }
    v.level = day->level() <= kLevelManual ? day->level() : 0;
    v.levelsEnabled = day->level() != kLevelNone && profile.height() >= 0.0f &&
                      profile.age() >= 0 && day->weight() >= 0.0f;
    v.bmrEnabled = v.levelsEnabled && day->level() == kLevelManual;
    v.bmr = std::to_string(day->bmr());
    return v;
}

Outcome ActivityForm::command(Command id) {
    if (id != Command::SetAsDailyDefault) {
        return chooseLevel(static_cast<uint16_t>(id));
    }
    if (!m_days->store().profile.setDefaultLevel(view().level)) {
        return {};
    }
    return {.notices = {.userData = true, .dataChanged = true}};
}

Outcome ActivityForm::chooseLevel(uint16_t level) {
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || !day->setLevel(level)) {
        return {};
    }
    if (level == kLevelManual) {
        (void)day->setBmr(0);
    }
    recomputeDay(*day, m_days->store().profile);
    return {.notices = {.userData = true, .dataChanged = true}};
}

Outcome ActivityForm::edit(Field, std::string_view text) {
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || day->level() != kLevelManual) {
        return {};
    }
    int value = 0;
    for (std::size_t i = 0; i < text.size() && i < kBmrMaxChars; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            break;
        }
        value = value * 10 + (text[i] - '0');
    }
    (void)day->setBmr(value);
    recomputeDay(*day, m_days->store().profile);
    return {.notices = {.userData = true, .dataChanged = true}};
}

}  // namespace nutrovex
