#include <gtest/gtest.h>

#include <set>

#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "core/StoredSize.h"
#include "forms/exercise/EditExerciseForm.h"
#include "forms/exercise/ExerciseLogForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using Field = ExerciseChoice::Field;
using Command = ExerciseLogForm::Command;

class ExerciseLogTest : public LogbookFixture {
protected:
    ExerciseLogTest() { cursor.setCurrentDate(dmy(4, 5, 2002)); }

    void weighIn(float pounds) {
        (void)cursor.ensureCurrentDay();
        setDayWeight(*cursor.currentRecord(), pounds, store.profile);
    }
    // "Running", "General", "6.0 mph".
    void chooseRunning() {
        log.edit(Field::Type, "Running");
        log.edit(Field::Variant, "General");
        log.edit(Field::SubVariant, "6.0 mph");
    }
    // A user-defined exercise.
    void typeOwn(const char* name, const char* minutes, const char* calories) {
        log.edit(Field::Type, "User Defined Exercise");
        log.edit(Field::Name, name);
        log.edit(Field::Minutes, minutes);
        log.edit(Field::Calories, calories);
    }
    std::optional<ScreenMessage> calories() { return log.command(Command::Calories).message; }
    ExerciseChoiceView choice() const { return log.view().choice; }

    ExerciseClipboard clipboard;
    ExerciseLogForm log{cursor, clipboard};
};

TEST_F(ExerciseLogTest, ChoosingATypeSetsUpTheCombosAndClearsTheNumbers) {
    log.edit(Field::Minutes, "30");
    log.edit(Field::Calories, "360");
    log.edit(Field::Type, "Basketball");  // no variants
    ExerciseChoiceView f = choice();
    EXPECT_TRUE(f.variantsShown);
    EXPECT_FALSE(f.variantsEnabled);
    EXPECT_FALSE(f.nameShown);
    EXPECT_EQ(f.variant, -1);
    EXPECT_TRUE(f.minutes.empty());
    EXPECT_TRUE(f.calories.empty());

    log.edit(Field::Type, "User Defined Exercise");
    f = choice();
    EXPECT_FALSE(f.variantsShown);
    EXPECT_TRUE(f.nameShown);

    log.edit(Field::Type, "Aerobics");
    f = choice();
    EXPECT_TRUE(f.variantsEnabled);
    EXPECT_TRUE(f.subVariantsEnabled);
    log.edit(Field::Variant, "Water");  // no sub-variants
    f = choice();
    EXPECT_FALSE(f.subVariantsEnabled);
    EXPECT_EQ(f.subVariant, -1);
}

TEST_F(ExerciseLogTest, TheButtonsFollowTheEdits) {
    EXPECT_FALSE(choice().logEnabled);
    EXPECT_FALSE(choice().caloriesEnabled);
    log.edit(Field::Minutes, "30");
    EXPECT_TRUE(choice().caloriesEnabled);
    EXPECT_FALSE(choice().logEnabled);
    log.edit(Field::Calories, "100");
    EXPECT_TRUE(choice().logEnabled);
    log.edit(Field::Type, "User Defined Exercise");
    log.edit(Field::Minutes, "30");
    EXPECT_FALSE(choice().caloriesEnabled);
}

TEST_F(ExerciseLogTest, CaloriesNeedAWeightThenMinutes) {
    chooseRunning();
    log.edit(Field::Minutes, "30");
    EXPECT_EQ(calories(), weightNeededMessage());  // no day
    EXPECT_TRUE(store.days().empty());
    (void)cursor.ensureCurrentDay();
    EXPECT_EQ(calories(), weightNeededMessage());  // a day without weight

    weighIn(150.0f);
    log.edit(Field::Minutes, "0");
    EXPECT_EQ(calories(), timeNeededMessage());
    log.edit(Field::Minutes, "30");
    EXPECT_EQ(calories(), std::nullopt);
    EXPECT_EQ(choice().calories, "360");

    EXPECT_EQ(weightNeededMessage(),
              (ScreenMessage{"You must enter your weight before calories can be calculated.",
                             "Calories", MessageKind::Warning}));
    EXPECT_EQ(timeNeededMessage(),
              (ScreenMessage{"You must enter an exercise time before calories can be calculated.",
                             "Calories", MessageKind::Warning}));
}

TEST_F(ExerciseLogTest, AUserDefinedExerciseNeedsTypedCalories) {
    weighIn(150.0f);
    typeOwn("Canoeing", "45", "");
    EXPECT_EQ(calories(), std::nullopt);
    EXPECT_TRUE(choice().calories.empty());  // left to the person
    EXPECT_EQ(log.command(Command::Log),
              (Outcome{.message = specifyExerciseMessage()}));  // nothing changed
    log.edit(Field::Calories, "0");
    EXPECT_EQ(log.command(Command::Log).message, specifyExerciseMessage());
    EXPECT_TRUE(store.dayAt(0).exercises().empty());

    log.edit(Field::Calories, "300");
    EXPECT_EQ(log.command(Command::Log).message, std::nullopt);
    const ExerciseEntry& e = store.dayAt(0).exercises().at(0);
    EXPECT_EQ(e.name, "Canoeing");
    EXPECT_EQ(e.type, 26);
    EXPECT_EQ(e.variant, -1);
    EXPECT_EQ(e.minutes, 45);
    EXPECT_EQ(e.calories, 300);
    EXPECT_EQ(specifyExerciseMessage(),
              (ScreenMessage{"Please specify exercise time and calculate calories", "Exercise Log",
                             MessageKind::Warning}));
}

TEST_F(ExerciseLogTest, AFullDayRefusesTheExerciseWithAReason) {
    weighIn(150.0f);
    DayRecord& day = *cursor.currentRecord();
    ExerciseEntry filler;
    filler.name = "Running";  // the size of the entry logged below
    while (day.appendExercise(filler) != kNoPosition) {
    }
    const std::size_t before = day.exercises().size();
    ASSERT_GT(before, 1000u);
    const uint32_t counter = store.header.keyCounter.value;
    chooseRunning();
    log.edit(Field::Minutes, "30");
    ASSERT_EQ(calories(), std::nullopt);
    const Outcome refused = log.command(Command::Log);
    EXPECT_EQ(refused.message, dayFullMessage("Exercise Log"));
    EXPECT_EQ(refused.notices, Notices{});
    EXPECT_EQ(day.exercises().size(), before);
    EXPECT_EQ(store.header.keyCounter.value, counter);
}

TEST_F(ExerciseLogTest, LoggingTwiceGivesTwoEntriesAndRecomputesTheDay) {
    weighIn(150.0f);
    chooseRunning();
    log.edit(Field::Minutes, "30");
    ASSERT_EQ(calories(), std::nullopt);
    const Outcome logged = log.command(Command::Log);
    EXPECT_EQ(logged.message, std::nullopt);
    EXPECT_EQ(logged.notices, (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(logged.save, SavePoint::Nothing);  // saved when the screen closes
    EXPECT_EQ(log.close(), SavePoint::UserData);
    EXPECT_TRUE(choice().minutes.empty());
    EXPECT_TRUE(choice().calories.empty());
    log.edit(Field::Minutes, "30");
    log.edit(Field::Calories, "360");
    EXPECT_EQ(log.command(Command::Log).message, std::nullopt);
    // The grid shows the new entry selected.
    EXPECT_EQ(log.view().rows.back(), (ExerciseRow{"Running", "30", "360"}));
    EXPECT_EQ(log.view().selection, (ExerciseRowSelection{1, 1, false}));

    const DayRecord& day = store.dayAt(0);
    ASSERT_EQ(day.exercises().size(), 2u);
    EXPECT_EQ(day.exercises()[0].name, "Running");
    EXPECT_EQ(day.exercises()[0].third, 2);
    EXPECT_NE(day.exercises()[0].key.value, day.exercises()[1].key.value);
    EXPECT_EQ(day.exerciseCalories, 720u);
    EXPECT_EQ(day.exerciseMinutes, 60u);
}

TEST_F(ExerciseLogTest, LogCreatesTheDayWhenThereIsNone) {
    typeOwn("Walk", "10", "50");
    EXPECT_EQ(log.command(Command::Log).message, std::nullopt);
    ASSERT_EQ(store.days().size(), 1u);
    EXPECT_EQ(store.dayAt(0).exercises().size(), 1u);
}

TEST_F(ExerciseLogTest, ClipboardCopyCutAndPasteAcrossDays) {
    weighIn(150.0f);
    for (const char* calories : {"100", "200", "300"}) {
        typeOwn(calories, "10", calories);
        ASSERT_EQ(log.command(Command::Log).message, std::nullopt);
    }
    log.select(2, 1);
    EXPECT_EQ(log.selectedRows(), (std::vector<Position>{1, 2}));
    (void)log.command(Command::Copy);
    ASSERT_EQ(clipboard.entries().size(), 2u);
    EXPECT_EQ(clipboard.entries()[1].calories, 300);

    // Another screen, another day: the clipboard stays with the program.
    (void)cursor.setCurrentDate(dmy(9, 5, 2002));
    ExerciseLogForm other(cursor, clipboard);
    EXPECT_TRUE(other.view().pasteEnabled);
    EXPECT_EQ(other.command(Command::Paste).message, std::nullopt);
    ASSERT_EQ(store.days().size(), 2u);
    const DayRecord& pasted = store.dayAt(1);
    ASSERT_EQ(pasted.exercises().size(), 2u);
    EXPECT_EQ(pasted.exercises()[1].calories, 300);
    EXPECT_EQ(pasted.exerciseCalories, 500u);
    // Pasted twice onto the same day: every entry of the file keeps a key of its own.
    EXPECT_EQ(other.command(Command::Paste).message, std::nullopt);
    std::set<uint32_t> keys;
    for (const DayRecord* d : {&store.dayAt(0), &store.dayAt(1)}) {
        for (const ExerciseEntry& e : d->exercises()) {
            EXPECT_TRUE(keys.insert(e.key.value).second) << e.key.value;
        }
    }
    EXPECT_EQ(keys.size(), 7u);
    EXPECT_EQ(store.header.keyCounter.serial(), 7u);

    (void)cursor.setCurrentDate(dmy(4, 5, 2002));
    log.select(1, 1);
    (void)log.command(Command::Cut);
    const DayRecord& first = store.dayAt(0);
    ASSERT_EQ(first.exercises().size(), 2u);
    EXPECT_EQ(first.exerciseCalories, 400u);
    ASSERT_EQ(clipboard.entries().size(), 1u);
    EXPECT_EQ(clipboard.entries()[0].calories, 200);
}

TEST_F(ExerciseLogTest, DeleteRemovesTheSelectedRows) {
    weighIn(150.0f);
    for (const char* calories : {"100", "200", "300", "400", "500"}) {
        typeOwn("Walk", "10", calories);
        ASSERT_EQ(log.command(Command::Log).message, std::nullopt);
    }
    // Deleting rows past the end of the list; a selection left past the rows moves to the first.
    log.select(3, 9);
    (void)log.command(Command::Delete);
    log.select(1, 1);
    EXPECT_EQ(log.confirmation(Command::Delete),
              (ScreenMessage{"Are you sure you want to delete the selected exercises?", "Exercise",
                             MessageKind::Question}));
    (void)log.command(Command::Delete);
    const DayRecord& day = store.dayAt(0);
    ASSERT_EQ(day.exercises().size(), 2u);
    EXPECT_EQ(day.exercises()[0].calories, 100);
    EXPECT_EQ(day.exercises()[1].calories, 300);
    EXPECT_EQ(day.exerciseCalories, 400u);
    EXPECT_EQ(log.view().selection, (ExerciseRowSelection{1, 1, false}));

    // Select All reaches every row; without rows nothing is asked.
    (void)log.command(Command::SelectAll);
    EXPECT_EQ(log.selectedRows(), (std::vector<Position>{0, 1}));
    (void)log.command(Command::Delete);
    EXPECT_TRUE(day.exercises().empty());
    EXPECT_FALSE(log.confirmation(Command::Delete));
}

TEST_F(ExerciseLogTest, EditingAnEntryKeepsItsKey) {
    weighIn(150.0f);
    chooseRunning();
    log.edit(Field::Minutes, "30");
    log.edit(Field::Calories, "360");
    ASSERT_EQ(log.command(Command::Log).message, std::nullopt);
    const uint32_t key = store.dayAt(0).exercises()[0].key.value;

    std::optional<EditExerciseForm> edit = log.editSelected();
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->view().type, 15);
    EXPECT_EQ(edit->view().subVariant, 2);
    EXPECT_EQ(edit->view().minutes, "30");
    EXPECT_EQ(edit->view().calories, "360");
    edit->edit(Field::Minutes, "60");
    EXPECT_EQ(edit->command(EditExerciseForm::Command::Calories).message, std::nullopt);
    EXPECT_EQ(edit->command(EditExerciseForm::Command::Log).message, std::nullopt);
    const ExerciseEntry& e = store.dayAt(0).exercises()[0];
    EXPECT_EQ(e.key.value, key);
    EXPECT_EQ(e.minutes, 60);
    EXPECT_GT(e.calories, 700);
    EXPECT_EQ(store.dayAt(0).exerciseCalories, e.calories);

    edit->edit(Field::Minutes, "");
    EXPECT_EQ(edit->command(EditExerciseForm::Command::Log).message, specifyExerciseMessage());
}

TEST(ExerciseEdits, CountsReadDigitsOnly) {
    EXPECT_EQ(countFromEdit(""), 0);
    EXPECT_EQ(countFromEdit("45"), 45);
    EXPECT_EQ(countFromEdit("65535"), 65535);
    EXPECT_EQ(countFromEdit("65536"), 0);
    EXPECT_EQ(countFromEdit("-4"), 0);
    EXPECT_EQ(pasteLimitMessage(),
              (ScreenMessage{"Due to the maximum exercise limit not all of the exercise items were "
                             "pasted from the clipboard.",
                             "Paste Exercise", MessageKind::Warning}));
}

}  // namespace
}  // namespace nutrovex
