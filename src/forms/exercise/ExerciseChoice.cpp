#include "forms/exercise/ExerciseChoice.h"

#include "calc/Bmr.h"
#include "calc/ExerciseCalories.h"
#include "core/DayRecord.h"
#include "logbook/WeighIn.h"

namespace nutrovex {

namespace {

// The position of a list entry by its text; -1 when the list has no such entry.
int16_t indexOf(ExerciseNames names, std::string_view text) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (text == names[i]) {
            return static_cast<int16_t>(i);
        }
    }
    return -1;
}

}  // namespace

ScreenMessage weightNeededMessage() {
    return {"You must enter your weight before calories can be calculated.", "Calories",
            MessageKind::Warning};
}

ScreenMessage timeNeededMessage() {
    return {"You must enter an exercise time before calories can be calculated.", "Calories",
            MessageKind::Warning};
}

ScreenMessage specifyExerciseMessage() {
    return {"Please specify exercise time and calculate calories", "Exercise Log",
            MessageKind::Warning};
}

uint16_t countFromEdit(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    unsigned value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return 0;
        }
        value = value * 10 + static_cast<unsigned>(c - '0');
        if (value > 0xFFFF) {
            return 0;
        }
    }
    return static_cast<uint16_t>(value);
}

ExerciseChoice::ExerciseChoice(const ExerciseEntry& entry) {
    m_cursor.select({static_cast<int16_t>(entry.type), entry.variant, entry.third});
    if (userDefined()) {
        m_name = entry.name.str();
    }
    m_minutes = std::to_string(entry.minutes);
    m_calories = std::to_string(entry.calories);
}

ExerciseChoiceView ExerciseChoice::view() const {
    ExerciseChoiceView v;
    v.type = m_cursor.type();
    v.variant = m_cursor.variant();
    v.subVariant = m_cursor.subVariant();
    v.variantNames = m_cursor.variantNames();
    v.subVariantNames = m_cursor.subVariantNames();
    v.variantsShown = !userDefined();
    v.variantsEnabled = m_cursor.variantCount() > 0;
    v.subVariantsEnabled = m_cursor.subVariantCount() > 0;
    v.nameShown = userDefined();
    v.caloriesEnabled = !m_minutes.empty() && !userDefined();
    v.logEnabled = !m_minutes.empty() && !m_calories.empty();
    v.name = m_name;
    v.minutes = m_minutes;
    v.calories = m_calories;
    return v;
}

void ExerciseChoice::edit(Field field, std::string_view text) {
    switch (field) {
        case Field::Type:
            m_cursor.setType(indexOf(typeNames(), text));
            clearNumbers();
            break;
        case Field::Variant:
            m_cursor.setVariant(indexOf(m_cursor.variantNames(), text));
            break;
        case Field::SubVariant:
            m_cursor.setSubVariant(indexOf(m_cursor.subVariantNames(), text));
            break;
        case Field::Name:
            m_name = text;
            break;
        case Field::Minutes:
            m_minutes = text;
            break;
        case Field::Calories:
            m_calories = text;
            break;
    }
}

void ExerciseChoice::clearNumbers() {
    m_minutes.clear();
    m_calories.clear();
}

std::optional<ScreenMessage> ExerciseChoice::computeCalories(const DayRecord* day) {
    if (day == nullptr) {
        return weightNeededMessage();
    }
    const int16_t typedMinutes = wholeFromEdit(m_minutes);
    const int16_t pounds = weightToWhole(day->weight(), false).value;
    if (pounds <= 0) {
        return weightNeededMessage();
    }
    if (typedMinutes <= 0) {
        return timeNeededMessage();
    }
    if (userDefined()) {
        return std::nullopt;
    }
    const ExerciseCaloriesResult r =
        computeExerciseCalories(m_cursor.selection(), pounds, typedMinutes);
    if (r.ok) {
        m_calories = std::to_string(r.calories);
    }
    return std::nullopt;
}

std::optional<ExerciseEntry> ExerciseChoice::entry() const {
    const uint16_t cal = countFromEdit(m_calories);
    const uint16_t min = countFromEdit(m_minutes);
    if (cal == 0 || min == 0) {
        return std::nullopt;
    }
    ExerciseEntry e;
    e.type = static_cast<uint16_t>(m_cursor.type());
    e.variant = m_cursor.variant();
    e.third = m_cursor.subVariant();
    e.name = userDefined() ? std::string_view(m_name) : std::string_view(exerciseTypeName(e.type));
    e.minutes = min;
    e.calories = cal;
    return e;
}

}  // namespace nutrovex
