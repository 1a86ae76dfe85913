#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "forms/exercise/ExerciseLogForm.h"
#include "forms/logbook/ActivityForm.h"
#include "forms/logbook/FoodBudgetForms.h"
#include "forms/logbook/JournalForm.h"
#include "forms/logbook/LogbookForm.h"
#include "forms/logbook/WeighInForm.h"
#include "logbook/ExerciseLog.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

class DayLine : public LogbookFixture {};

// Every screen of a day names it, and follows the logbook when it moves to another date.
TEST_F(DayLine, EveryDayScreenNamesTheLogbooksCurrentDate) {
    ExerciseClipboard clipboard;
    const ActivityForm activity(cursor);
    const JournalForm journal(cursor);
    const WeighInForm weighIn(cursor);
    const ExerciseLogForm exercise(cursor, clipboard);
    const FoodBudgetForm budget(cursor);
    const FoodBudgetBoxForm box(cursor);
    const struct {
        const char* screen;
        std::function<std::string()> date;
    } screens[] = {
        {"activity", [&] { return activity.view().date; }},
        {"journal", [&] { return journal.view().date; }},
        {"weigh-in", [&] { return weighIn.view().date; }},
        {"exercise log", [&] { return exercise.view().date; }},
        {"food budget", [&] { return budget.date(); }},
        {"food budget box", [&] { return box.date(); }},
    };
    for (const auto& s : screens) {
        EXPECT_EQ(s.date(), "Thursday November 21, 2002") << s.screen;
    }
    LogbookForm logbook(cursor);
    (void)logbook.command(LogbookForm::Command::Previous);
    for (const auto& s : screens) {
        EXPECT_EQ(s.date(), "Wednesday November 20, 2002") << s.screen;  // no record needed
    }
}

}  // namespace
}  // namespace nutrovex
