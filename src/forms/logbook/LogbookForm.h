#pragma once

#include <optional>
#include <string_view>

#include "core/CalendarDate.h"
#include "core/ScreenMessage.h"
#include "forms/logbook/DayGlance.h"
#include "logbook/DayCursor.h"
#include "logbook/Logbook.h"

namespace nutrovex {

// What the logbook screen shows for its current date.
struct LogbookView {
    // Without an open user every command does nothing and the fields keep their texts.
    bool userOpen = false;
    LogbookFigures figures;
    int water = 0;      // the water box's count
    CalendarDate date;  // where the date picker opens
    DayGlance glance;   // the day's foods, exercises and what is left of its budget
};

// The logbook screen: one date at a time with its figures, day navigation, the water count and
// the deletion of days. Every command that moves or changes the days reports the user's data
// modified, so the next save point writes the file even after mere navigation.
class LogbookForm {
public:
    // targets, when given, are the person's; the glance shows the day against them.
    explicit LogbookForm(DayCursor& days, const MacroTargets* targets = nullptr)
        : m_days(&days), m_targets(targets) {}

    enum class Field : uint8_t {
        Water,  // the water box: at most two digits; a change creates the day when needed
        Date,   // Go to Date... on the calendar
    };
    enum class Command : uint8_t {
        Previous,
        Next,
        First,
        Last,
        Today,
        DeleteCurrentDay,  // after confirmation
        DeleteAllDays,     // after confirmation: the profile and goals are kept, today is current
    };

    [[nodiscard]] static const char* pickDateCaption() { return "Start Date"; }

    // The status line's prompts of the logbook's menu entries.
    struct Prompts {
        static constexpr const char* weighIn = "Weigh In";
        static constexpr const char* meals = "Meals";
        static constexpr const char* bmr = "BMR";
        static constexpr const char* exercise = "Exercise";
        static constexpr const char* journal = "Daily Journal";
        static constexpr const char* foodBudget = "Food Budget";
        static constexpr const char* summaryTable = "Summary Table";
        static constexpr const char* weightChart = "Weight Chart";
        static constexpr const char* about = "About";
        static constexpr const char* previous = "Previous Record";
        static constexpr const char* next = "Next Record";
        static constexpr const char* first = "First Record";
        static constexpr const char* last = "Last Record";
        static constexpr const char* deleteCurrentDay = "Deletes the current day";
        static constexpr const char* deleteRange = "Deletes a range of days";
        static constexpr const char* deleteAll = "Delete all days";
    };

    // Recomputes the current day's totals on the way.
    [[nodiscard]] LogbookView view();
    [[nodiscard]] const Clock& clock() const { return m_days->store().clock(); }
    Outcome edit(Field field, std::string_view text);
    Outcome pickDate(Field field, const CalendarDate& date);
    [[nodiscard]] static std::optional<ScreenMessage> confirmation(Command id);
    Outcome command(Command id);
    // The logbook writes nothing itself when it closes: the screens it opens save.
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    [[nodiscard]] bool userOpen() const;

    DayCursor* m_days;
    const MacroTargets* m_targets;
};

}  // namespace nutrovex
