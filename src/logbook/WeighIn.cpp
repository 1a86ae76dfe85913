#include "logbook/WeighIn.h"

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "core/ServingUnits.h"
#include "core/UserProfile.h"
#include "logbook/Logbook.h"

namespace nutrovex {

const char* const kWeighInAdvice =
    "You must weigh in each day in order for the software to track your weight, calculate daily "
    "BMR and calculate the calories you burn through exercise.";
const char* const kWeighInTimingAdvice =
    "Tracking weight loss or weight gain is optimally done by weighing in at the same time each "
    "day, preferrably in the morning.";
const char* const kNoJournalText = "Enter daily notes here.";

namespace {

constexpr int16_t kMaxWeightEntry = 999;

}  // namespace

int16_t wholeFromEdit(std::string_view text) {
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > 32767) {
            return 0;  // not a 16-bit number: the screen reads nothing
        }
    }
    return static_cast<int16_t>(negative ? -value : value);
}

WholeResult dayWeightToWhole(float pounds, bool metric) {
    if (!metric || pounds < 0.0f) {
        return weightToWhole(pounds, false);
    }
    float kilograms = 0.0f;
    (void)convertServing(pounds, ServingUnit::Pound, ServingUnit::Kilogram, kilograms);
    return {true, roundWhole(kilograms)};
}

float storedWeightFromEntry(int16_t typed, bool metric) {
    if (typed == 0) {
        return kNotEntered;
    }
    if (typed > kMaxWeightEntry) {
        typed = kMaxWeightEntry;
    }
    float pounds = typed;
    if (metric) {
        (void)convertServing(static_cast<float>(typed), ServingUnit::Kilogram, ServingUnit::Pound,
                             pounds);
    }
    return pounds;
}

WeighInView WeighIn::view() {
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

Notices WeighIn::weightEdited(std::string_view text) {
    const int16_t typed = wholeFromEdit(text);
    Notices n;
    if (m_days->currentRecord() == nullptr && typed < 1) {
        return n;
    }
    DayRecord* day = m_days->ensureCurrentRecord();
    if (day == nullptr) {
        return n;  // the day list is full
    }
    UserStore& store = m_days->store();
    setDayWeight(*day, storedWeightFromEntry(typed, store.profile.metric()), store.profile);
    n.userData = true;
    n.dayCreated = true;  // the logbook and the charts redraw on it
    return n;
}

std::string Journal::load() {
    if (const DayRecord* day = m_days->currentRecord()) {
        return std::string(day->note());
    }
    return kNoJournalText;
}

Notices Journal::textChanged(std::string_view text) {
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr) {
        return {};
    }
    day->setNote(text.substr(0, kMaxNoteChars));
    return Notices{.userData = true};
}

std::string Journal::enterPressed(std::string_view editorText) {
    const DayRecord* day = m_days->currentRecord();
    std::string text(day != nullptr ? day->note() : editorText);
    if (text.size() + 2 <= kMaxNoteChars) {
        text += "\r\n";
    }
    (void)textChanged(text);
    return text;
}

}  // namespace nutrovex
