#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/CalendarDate.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class Session;

// What Copy To can take from the shown day: the rows selected in a food list, one meal of that
// list, or every food and exercise of the day.
enum class CopyChoice : uint8_t { Selected, Breakfast, Lunch, Dinner, Snack, WholeDay };

struct CopyToView {
    // "From Thursday November 21, 2002 of Zerbu", and ", the list Fruits" from a group's list
    std::string from;
    std::vector<std::string>
        choices;          // "Breakfast (2 foods)", "The whole day (3 foods, 1 exercise)"
    int choice = 0;       // its position in choices
    std::string date;     // the day copied to, as a long date
    CalendarDate target;  // where the calendar opens
    std::vector<std::string> people;  // every person of the data root
    int person = -1;
    bool canCopy = false;  // the choice holds something to copy
    std::string result;    // what the last copy did, for the screen's status line
};

// Copy To: copies foods and exercises of the logbook's current day to any date, of the open
// person or of another person of the same data root. The screen stays open after a copy, so one
// meal can go to several days.
class CopyToForm {
public:
    // From a day's food list (0..7, or 8 for every group): the selected entries are offered
    // first when there are any, then the list's meals and the whole day. From the logbook:
    // kAllFoodsGroup, no selection, the whole day chosen.
    CopyToForm(Session& session, int shownGroup, FoodList selected, CopyChoice initial);

    enum class Field : uint8_t {
        What,    // one of view().choices, by its text
        Person,  // one of view().people
    };
    enum class Command : uint8_t {
        // Copies the choice; a message says what a full day left out, or why the other person's
        // logbook could not be used (nothing is changed then).
        Copy,
    };

    [[nodiscard]] CopyToView view() const;
    Outcome edit(Field field, std::string_view text);
    void pickDate(const CalendarDate& date);
    // Where the calendar's "today" comes from.
    [[nodiscard]] const Clock& clock() const;
    Outcome command(Command id);
    // A copy into the open person's logbook is saved when the screen closes; into another
    // person's, at once.
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

    [[nodiscard]] static const char* caption() { return "Copy To"; }

private:
    [[nodiscard]] std::vector<CopyChoice> offered() const;
    [[nodiscard]] std::string choiceText(CopyChoice c) const;
    void entriesOf(CopyChoice c, FoodList& foods, ExerciseList& exercises) const;

    Session* m_session;
    int m_group;
    FoodList m_selected;
    CopyChoice m_choice;
    CalendarDate m_date;
    std::string m_person;
    std::string m_result;
};

}  // namespace nutrovex
