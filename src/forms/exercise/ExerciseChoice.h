#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "calc/ExerciseCatalog.h"
#include "core/ExerciseEntry.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class DayRecord;

// The refusals of the exercise screens.
[[nodiscard]] ScreenMessage weightNeededMessage();     // "You must enter your weight ..."
[[nodiscard]] ScreenMessage timeNeededMessage();       // "You must enter an exercise time ..."
[[nodiscard]] ScreenMessage specifyExerciseMessage();  // "Please specify exercise time ..."

// The name edit of a user-defined exercise.
inline constexpr std::size_t kExerciseNameLimit = 40;

// An edit that takes digits only, as a whole number: 0 when empty, not a number or past 65535.
[[nodiscard]] uint16_t countFromEdit(std::string_view text);

// What the exercise choice shows: the three lists with their selections (-1 selects nothing),
// the edits, and which controls are shown and enabled.
struct ExerciseChoiceView {
    int type = 0;
    int variant = -1;
    int subVariant = -1;
    ExerciseNames variantNames;
    ExerciseNames subVariantNames;
    bool variantsShown = true;  // hidden for a user-defined exercise, which has a name instead
    bool variantsEnabled = false;
    bool subVariantsEnabled = false;
    bool nameShown = false;
    bool caloriesEnabled = false;  // "Calories" needs the minutes and a catalogue exercise
    bool logEnabled = false;       // "Log" needs both numbers
    std::string name;
    std::string minutes;
    std::string calories;
};

// The exercise choice and edits that the exercise log and "Edit Exercise" share: type, variant and
// sub-variant, the name of a user-defined exercise, minutes, calories and the "Calories" button.
class ExerciseChoice {
public:
    ExerciseChoice() = default;
    // "Edit Exercise" opens on a logged entry.
    explicit ExerciseChoice(const ExerciseEntry& entry);

    // The lists' entries are given by their text.
    enum class Field : uint8_t { Type, Variant, SubVariant, Name, Minutes, Calories };

    [[nodiscard]] static ExerciseNames typeNames() { return ExerciseCursor::typeNames(); }
    [[nodiscard]] ExerciseChoiceView view() const;
    // A new type sets its first variant and sub-variant (or none) and clears minutes and
    // calories.
    void edit(Field field, std::string_view text);
    void clearNumbers();

    // The "Calories" button: fills the calories from the day's weight and the minutes, or gives
    // the refusal to show. A user-defined exercise is left to the person.
    [[nodiscard]] std::optional<ScreenMessage> computeCalories(const DayRecord* day);
    // The entry the edits describe, or nullopt when minutes or calories read as 0.
    [[nodiscard]] std::optional<ExerciseEntry> entry() const;

private:
    [[nodiscard]] bool userDefined() const { return m_cursor.type() == kUserDefinedExercise; }

    ExerciseCursor m_cursor;
    std::string m_name;
    std::string m_minutes;
    std::string m_calories;
};

}  // namespace nutrovex
