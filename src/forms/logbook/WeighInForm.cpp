#include "forms/logbook/WeighInForm.h"

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "core/UserStore.h"
#include "logbook/Logbook.h"
#include "logbook/WeighIn.h"

namespace nutrovex {

const char* const kWeighInAdvice =
    "You must weigh in each day in order for the software to track your weight, calculate daily "
    "BMR and calculate the calories you burn through exercise.";
const char* const kWeighInTimingAdvice =
    "Tracking weight loss or weight gain is optimally done by weighing in at the same time each "
    "day, preferrably in the morning.";

WeighInView WeighInForm::view() const {
    const UserProfile& profile = m_days->store().profile;
    WeighInView v;
    v.date = longDateText(m_days->currentDate());
    if (const DayRecord* day = m_days->currentRecord()) {
        const WholeResult whole = dayWeightToWhole(day->weight(), profile.metric());
        if (whole.value >= 0) {
            v.weight = std::to_string(whole.value);
        }
    }
    v.unit = logbookWeightUnit(profile.metric());
    return v;
}

Outcome WeighInForm::edit(Field, std::string_view text) {
    const int16_t typed = wholeFromEdit(text);
    if (m_days->currentRecord() == nullptr && typed < 1) {
        return {};
    }
    bool created = false;
    DayRecord* day = m_days->ensureCurrentRecord(&created);
    if (day == nullptr) {
        return {};  // the day list is full
    }
    UserStore& store = m_days->store();
    setDayWeight(*day, storedWeightFromEntry(typed, store.profile.metric()), store.profile);
    // The logbook and the charts redraw on it.
    return {.notices = {.userData = true, .dataChanged = true, .dayCreated = created}};
}

}  // namespace nutrovex
