#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/CalendarDate.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

class DayRecord;
class UserProfile;

// Every text the logbook form shows, in the order it draws them.
struct LogbookFigures {
    std::string date;      // "Wednesday September 25, 2002"
    std::string weight;    // "154  lbs" or "---  lbs"
    std::string meals;     // "1500"
    std::string bmr;       // "- 1700" or "0"
    std::string exercise;  // "- 360" or "0"
    std::string total;     // "- 560" or "120"
    std::string record;    // "Record: 2 of 3" or "Record: -- of 2"
    std::string goal;      // "Goal: -500 cal", or empty while the goals are incomplete
    std::string water;     // "3"

    friend bool operator==(const LogbookFigures&, const LogbookFigures&) = default;
};

// The weight line's unit.
[[nodiscard]] const char* logbookWeightUnit(bool metric);
// "- %d" for a positive amount of calories taken away, "%d" otherwise.
[[nodiscard]] std::string subtractedCalories(long calories);
// The net total: meals rounded half up, less BMR and exercise.
[[nodiscard]] long netCalories(float mealCalories, int bmr, uint32_t exerciseCalories);
[[nodiscard]] std::string netTotalText(long net);
[[nodiscard]] std::string goalLine(const UserProfile& profile);
// The figures of a date; day is null when the date has no record.
[[nodiscard]] LogbookFigures logbookFigures(const CalendarDate& date, const DayRecord* day,
                                            const UserProfile& profile, bool found, Position index,
                                            uint16_t count);

inline constexpr int kMaxWater = 99;
inline constexpr std::size_t kWaterMaxChars = 2;

// The "Select a range of days" dialog: start and end, the end always after the start.
class DayRange {
public:
    // From today to tomorrow.
    explicit DayRange(const CalendarDate& today);

    [[nodiscard]] const CalendarDate& start() const { return m_start; }
    [[nodiscard]] const CalendarDate& end() const { return m_end; }
    // A new start puts the end on the day after it.
    void setStart(const CalendarDate& date);
    // An end on or before the start becomes the day after the start.
    void setEnd(const CalendarDate& date);
    [[nodiscard]] std::string startText() const { return longDateText(m_start); }
    [[nodiscard]] std::string endText() const { return longDateText(m_end); }

private:
    CalendarDate m_start;
    CalendarDate m_end;
};

// The logbook form's decisions: the figures it shows, what its commands do to the days, and the
// water count typed into it. Every command that moves or changes the days reports the user's data
// modified, so the next save point writes the file even after mere navigation.
class Logbook {
public:
    explicit Logbook(DayCursor& days) : m_days(&days) {}

    [[nodiscard]] DayCursor& days() { return *m_days; }
    // With no user open every command does nothing and the fields keep their texts.
    [[nodiscard]] bool userOpen() const;
    // Recomputes the current day's totals on the way; nullopt when no user is open.
    [[nodiscard]] std::optional<LogbookFigures> figures();

    Notices previous();
    Notices next();
    Notices first();
    Notices last();
    // The calendar picker's OK ("Start Date" is its caption here too).
    Notices pickDate(const CalendarDate& date);
    [[nodiscard]] static const char* pickDateCaption() { return "Start Date"; }

    [[nodiscard]] static ScreenMessage confirmDeleteCurrentDay();
    // On Yes.
    Notices deleteCurrentDay();
    // On OK of the range dialog; no confirmation is asked.
    Notices deleteRange(const DayRange& range);
    [[nodiscard]] static ScreenMessage confirmDeleteAllDays();
    // On Yes: the profile and goals are kept, the current date becomes today.
    Notices deleteAllDays();

    // The water edit: a change the person made (editModified) is stored, creating the day if
    // needed; the form's own writes are ignored. The caller clears the edit's modified state.
    Notices waterChanged(bool editModified, std::string_view text);

private:
    // What a command that moved or changed the days reports: the data to save, and a redraw.
    Notices moved();

    DayCursor* m_days;
};

}  // namespace nutrovex
