#include <gtest/gtest.h>

#include <set>

#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "core/StoredSize.h"
#include "logbook/ExerciseLog.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

class ExerciseLogTest : public LogbookFixture {
protected:
    ExerciseLogTest() { cursor.setCurrentDate(dmy(4, 5, 2002)); }

    void weighIn(float pounds) {
        (void)cursor.ensureCurrentDay();
        setDayWeight(*cursor.currentRecord(), pounds, store.profile);
    }
    // "Running", "General", "6.0 mph".
    void chooseRunning() {
        log.form.chooseType(15);
        log.form.chooseVariant(0);
        log.form.chooseSubVariant(2);
    }

    ExerciseClipboard clipboard;
    ExerciseLog log{cursor, clipboard};
};

TEST_F(ExerciseLogTest, ChoosingATypeSetsUpTheCombosAndClearsTheNumbers) {
    ExerciseForm& f = log.form;
    f.minutes = "30";
    f.calories = "360";
    f.chooseType(1);  // "Basketball": no variants
    EXPECT_TRUE(f.variantsShown());
    EXPECT_FALSE(f.variantsEnabled());
    EXPECT_FALSE(f.nameShown());
    EXPECT_EQ(f.selection().variant(), -1);
    EXPECT_TRUE(f.minutes.empty());
    EXPECT_TRUE(f.calories.empty());

    f.chooseType(kUserDefinedExercise);
    EXPECT_FALSE(f.variantsShown());
    EXPECT_TRUE(f.nameShown());

    f.chooseType(0);
    EXPECT_TRUE(f.variantsEnabled());
    EXPECT_TRUE(f.subVariantsEnabled());
    f.chooseVariant(2);  // "Water": no sub-variants
    EXPECT_FALSE(f.subVariantsEnabled());
    EXPECT_EQ(f.selection().subVariant(), -1);
}

TEST_F(ExerciseLogTest, TheButtonsFollowTheEdits) {
    ExerciseForm& f = log.form;
    EXPECT_FALSE(f.logEnabled());
    EXPECT_FALSE(f.caloriesEnabled());
    f.minutes = "30";
    EXPECT_TRUE(f.caloriesEnabled());
    EXPECT_FALSE(f.logEnabled());
    f.calories = "100";
    EXPECT_TRUE(f.logEnabled());
    f.chooseType(kUserDefinedExercise);
    f.minutes = "30";
    EXPECT_FALSE(f.caloriesEnabled());
}

TEST_F(ExerciseLogTest, CaloriesNeedAWeightThenMinutes) {
    chooseRunning();
    log.form.minutes = "30";
    EXPECT_EQ(log.calories(), weightNeededMessage());  // no day
    EXPECT_TRUE(store.days().empty());
    (void)cursor.ensureCurrentDay();
    EXPECT_EQ(log.calories(), weightNeededMessage());  // a day without weight

    weighIn(150.0f);
    log.form.minutes = "0";
    EXPECT_EQ(log.calories(), timeNeededMessage());
    log.form.minutes = "30";
    EXPECT_EQ(log.calories(), std::nullopt);
    EXPECT_EQ(log.form.calories, "360");

    EXPECT_EQ(weightNeededMessage(),
              (ScreenMessage{"You must enter your weight before calories can be calculated.",
                             "Calories", MessageKind::Warning}));
    EXPECT_EQ(timeNeededMessage(),
              (ScreenMessage{"You must enter an exercise time before calories can be calculated.",
                             "Calories", MessageKind::Warning}));
}

TEST_F(ExerciseLogTest, AUserDefinedExerciseNeedsTypedCalories) {
    weighIn(150.0f);
    log.form.chooseType(kUserDefinedExercise);
    log.form.name = "Canoeing";
    log.form.minutes = "45";
    EXPECT_EQ(log.calories(), std::nullopt);
    EXPECT_TRUE(log.form.calories.empty());                                // left to the person
    EXPECT_EQ(log.log(), (Outcome{.message = specifyExerciseMessage()}));  // nothing changed
    log.form.calories = "0";
    EXPECT_EQ(log.log().message, specifyExerciseMessage());
    EXPECT_TRUE(store.dayAt(0).exercises().empty());

    log.form.calories = "300";
    EXPECT_EQ(log.log().message, std::nullopt);
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
    log.form.minutes = "30";
    ASSERT_EQ(log.calories(), std::nullopt);
    const Outcome refused = log.log();
    EXPECT_EQ(refused.message, dayFullMessage("Exercise Log"));
    EXPECT_EQ(refused.notices, Notices{});
    EXPECT_EQ(day.exercises().size(), before);
    EXPECT_EQ(store.header.keyCounter.value, counter);
}

TEST_F(ExerciseLogTest, LoggingTwiceGivesTwoEntriesAndRecomputesTheDay) {
    weighIn(150.0f);
    chooseRunning();
    log.form.minutes = "30";
    ASSERT_EQ(log.calories(), std::nullopt);
    const Outcome logged = log.log();
    EXPECT_EQ(logged.message, std::nullopt);
    EXPECT_EQ(logged.notices, (Notices{.userData = true, .dataChanged = true}));
    EXPECT_TRUE(log.form.minutes.empty());
    EXPECT_TRUE(log.form.calories.empty());
    log.form.minutes = "30";
    log.form.calories = "360";
    EXPECT_EQ(log.log().message, std::nullopt);

    const DayRecord& day = store.dayAt(0);
    ASSERT_EQ(day.exercises().size(), 2u);
    EXPECT_EQ(day.exercises()[0].name, "Running");
    EXPECT_EQ(day.exercises()[0].third, 2);
    EXPECT_NE(day.exercises()[0].key.value, day.exercises()[1].key.value);
    EXPECT_EQ(day.exerciseCalories, 720u);
    EXPECT_EQ(day.exerciseMinutes, 60u);
}

TEST_F(ExerciseLogTest, LogCreatesTheDayWhenThereIsNone) {
    log.form.chooseType(kUserDefinedExercise);
    log.form.minutes = "10";
    log.form.calories = "50";
    EXPECT_EQ(log.log().message, std::nullopt);
    ASSERT_EQ(store.days().size(), 1u);
    EXPECT_EQ(store.dayAt(0).exercises().size(), 1u);
}

TEST_F(ExerciseLogTest, ClipboardCopyCutAndPasteAcrossDays) {
    weighIn(150.0f);
    for (const char* calories : {"100", "200", "300"}) {
        log.form.chooseType(kUserDefinedExercise);
        log.form.name = calories;
        log.form.minutes = "10";
        log.form.calories = calories;
        ASSERT_EQ(log.log().message, std::nullopt);
    }
    const std::vector<Position> rows = {2, 0};
    log.copy(rows);
    ASSERT_EQ(clipboard.entries().size(), 2u);
    EXPECT_EQ(clipboard.entries()[0].calories, 300);

    // Another screen, another day: the clipboard stays with the program.
    ExerciseLog other(cursor, clipboard);
    (void)cursor.setCurrentDate(dmy(9, 5, 2002));
    EXPECT_EQ(other.paste().message, std::nullopt);
    ASSERT_EQ(store.days().size(), 2u);
    const DayRecord& pasted = store.dayAt(1);
    ASSERT_EQ(pasted.exercises().size(), 2u);
    EXPECT_EQ(pasted.exercises()[1].calories, 100);
    EXPECT_EQ(pasted.exerciseCalories, 400u);
    // Pasted twice onto the same day: every entry of the file keeps a key of its own.
    EXPECT_EQ(other.paste().message, std::nullopt);
    std::set<uint32_t> keys;
    for (const DayRecord* d : {&store.dayAt(0), &store.dayAt(1)}) {
        for (const ExerciseEntry& e : d->exercises()) {
            EXPECT_TRUE(keys.insert(e.key.value).second) << e.key.value;
        }
    }
    EXPECT_EQ(keys.size(), 7u);
    EXPECT_EQ(store.header.keyCounter.serial(), 7u);

    (void)cursor.setCurrentDate(dmy(4, 5, 2002));
    const std::vector<Position> middle = {1};
    log.cut(middle);
    const DayRecord& first = store.dayAt(0);
    ASSERT_EQ(first.exercises().size(), 2u);
    EXPECT_EQ(first.exerciseCalories, 400u);
    ASSERT_EQ(clipboard.entries().size(), 1u);
    EXPECT_EQ(clipboard.entries()[0].calories, 200);
}

TEST_F(ExerciseLogTest, DeleteRemovesTheSelectedRows) {
    weighIn(150.0f);
    for (const char* calories : {"100", "200", "300", "400"}) {
        log.form.chooseType(kUserDefinedExercise);
        log.form.minutes = "10";
        log.form.calories = calories;
        ASSERT_EQ(log.log().message, std::nullopt);
    }
    const std::vector<Position> rows = {3, 1, 1, 9};
    log.deleteRows(rows);
    const DayRecord& day = store.dayAt(0);
    ASSERT_EQ(day.exercises().size(), 2u);
    EXPECT_EQ(day.exercises()[0].calories, 100);
    EXPECT_EQ(day.exercises()[1].calories, 300);
    EXPECT_EQ(day.exerciseCalories, 400u);
    EXPECT_EQ(confirmDeleteExercises(),
              (ScreenMessage{"Are you sure you want to delete the selected exercises?", "Exercise",
                             MessageKind::Question}));
}

TEST_F(ExerciseLogTest, EditingAnEntryKeepsItsKey) {
    weighIn(150.0f);
    chooseRunning();
    log.form.minutes = "30";
    log.form.calories = "360";
    ASSERT_EQ(log.log().message, std::nullopt);
    const uint32_t key = store.dayAt(0).exercises()[0].key.value;

    ExerciseForm edit(store.dayAt(0).exercises()[0]);
    EXPECT_EQ(edit.selection().type(), 15);
    EXPECT_EQ(edit.selection().subVariant(), 2);
    EXPECT_EQ(edit.minutes, "30");
    EXPECT_EQ(edit.calories, "360");
    edit.minutes = "60";
    EXPECT_EQ(edit.computeCalories(cursor.currentRecord()), std::nullopt);
    EXPECT_EQ(log.replace(0, edit).message, std::nullopt);
    const ExerciseEntry& e = store.dayAt(0).exercises()[0];
    EXPECT_EQ(e.key.value, key);
    EXPECT_EQ(e.minutes, 60);
    EXPECT_GT(e.calories, 700);
    EXPECT_EQ(store.dayAt(0).exerciseCalories, e.calories);

    edit.minutes.clear();
    EXPECT_EQ(log.replace(0, edit).message, specifyExerciseMessage());
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
