#include <gtest/gtest.h>

#include <string>

#include "calc/Bmr.h"
#include "forms/logbook/JournalForm.h"
#include "forms/logbook/LogbookForm.h"
#include "forms/logbook/WeighInForm.h"
#include "logbook/LogbookFixture.h"
#include "logbook/WeighIn.h"

namespace nutrovex {
namespace {

class WeighInTest : public LogbookFixture {
protected:
    WeighInTest() {
        store.profile.setHeight(70.0f);
        store.profile.setAge(30);
        cursor.setCurrentDate(dmy(4, 5, 2002));
    }

    Notices weigh(std::string_view text) {
        return weighIn.edit(WeighInForm::Field::Weight, text).notices;
    }
    Notices note(std::string_view text) {
        return journal.edit(JournalForm::Field::Note, text).notices;
    }
    std::string newLine() {
        (void)journal.command(JournalForm::Command::NewLine);
        return journal.view().text;
    }
    std::string logbookWeight() { return LogbookForm(cursor).view().figures.weight; }

    WeighInForm weighIn{cursor};
    JournalForm journal{cursor};
};

TEST_F(WeighInTest, NothingBelowOneCreatesADay) {
    for (const char* text : {"", "0", "-5", "abc"}) {
        EXPECT_EQ(weigh(text), Notices{}) << text;
        EXPECT_TRUE(store.days().empty()) << text;
        EXPECT_FALSE(store.modified) << text;
    }
}

TEST_F(WeighInTest, AWeightCreatesTheDayAndSettlesItsBmr) {
    EXPECT_EQ(weigh("180"), (Notices{.userData = true, .dataChanged = true, .dayCreated = true}));
    // Only the first weight of a day creates it.
    EXPECT_EQ(weigh("181"), (Notices{.userData = true, .dataChanged = true}));
    (void)weigh("180");
    ASSERT_EQ(store.days().size(), 1u);
    const DayRecord& day = store.dayAt(0);
    EXPECT_FLOAT_EQ(day.weight(), 180.0f);
    EXPECT_EQ(day.level(), 2);  // the profile's default
    EXPECT_EQ(day.bmr(), 2234);
    EXPECT_EQ(day.flags() & kDayFlagWeight, kDayFlagWeight);
    EXPECT_EQ(weighIn.view().weight, "180");

    EXPECT_EQ(logbookWeight(), "180  lbs");
}

TEST_F(WeighInTest, ZeroErasesTheWeightOfAnExistingDay) {
    (void)weigh("150");
    EXPECT_EQ(weigh("0"), (Notices{.userData = true, .dataChanged = true}));
    const DayRecord& day = store.dayAt(0);
    EXPECT_LT(day.weight(), 0.0f);
    EXPECT_EQ(day.level(), 0);
    EXPECT_EQ(day.bmr(), 0);
    EXPECT_EQ(weighIn.view().weight, "");
    EXPECT_EQ(logbookWeight(), "---  lbs");
    EXPECT_EQ(LogbookForm(cursor).view().figures.bmr, "0");
}

TEST_F(WeighInTest, KilogramsAreShownAndStoredInPounds) {
    ASSERT_TRUE(store.profile.setUnits(1));
    EXPECT_EQ(weighIn.view(), (WeighInView{"Saturday May 4, 2002", "", "kg"}));

    (void)weigh("70");
    EXPECT_NEAR(store.dayAt(0).weight(), 154.3236f, 0.001f);
    EXPECT_EQ(weighIn.view().weight, "70");
}

TEST_F(WeighInTest, MetricWeightsReadBackAsTyped) {
    ASSERT_TRUE(store.profile.setUnits(1));
    for (int typed = 1; typed <= 999; ++typed) {
        const std::string text = std::to_string(typed);
        (void)weigh(text);
        ASSERT_EQ(weighIn.view().weight, text);
        ASSERT_EQ(logbookWeight(), text + "  kg");
    }
}

TEST_F(WeighInTest, MoreThanThreeDigitsAreKeptTo999) {
    for (const bool metric : {false, true}) {
        ASSERT_TRUE(store.profile.setUnits(metric ? 1 : 0));
        (void)weigh("1500");
        EXPECT_EQ(weighIn.view().weight, "999") << metric;
        EXPECT_FLOAT_EQ(store.dayAt(0).weight(), storedWeightFromEntry(999, metric)) << metric;
    }
}

TEST(WeighInEntry, EditReadingAndUnitConversion) {
    EXPECT_EQ(wholeFromEdit(""), 0);
    EXPECT_EQ(wholeFromEdit("154"), 154);
    EXPECT_EQ(wholeFromEdit("-3"), -3);
    EXPECT_EQ(wholeFromEdit("99999"), 0);
    EXPECT_FLOAT_EQ(storedWeightFromEntry(0, false), -1.0f);
    EXPECT_FLOAT_EQ(storedWeightFromEntry(0, true), -1.0f);
    EXPECT_FLOAT_EQ(storedWeightFromEntry(154, false), 154.0f);
    EXPECT_NEAR(storedWeightFromEntry(100, true), 220.4623f, 0.0001f);
}

TEST_F(WeighInTest, TheJournalOfADateWithoutARecordKeepsNothing) {
    EXPECT_EQ(journal.view().text, "Enter daily notes here.");
    EXPECT_EQ(note("Ran to the lake"), Notices{});
    EXPECT_TRUE(store.days().empty());
    EXPECT_FALSE(store.modified);
    (void)note("Ran");
    EXPECT_EQ(newLine(), "Ran\r\n");
    EXPECT_TRUE(store.days().empty());
}

TEST_F(WeighInTest, TheJournalWritesIntoAnExistingDay) {
    (void)weigh("150");
    EXPECT_EQ(journal.view().text, "");
    EXPECT_EQ(note("Ran to the lake"), Notices{.userData = true});
    EXPECT_EQ(store.dayAt(0).note(), "Ran to the lake");
    // Enter always appends at the very end, wherever the caret stood.
    EXPECT_EQ(newLine(), "Ran to the lake\r\n");
    EXPECT_EQ(store.dayAt(0).note(), "Ran to the lake\r\n");
    EXPECT_EQ(journal.view().text, "Ran to the lake\r\n");
}

TEST_F(WeighInTest, TheNoteStopsAt512Characters) {
    (void)weigh("150");
    const std::string full(512, 'x');
    EXPECT_EQ(note(full + "y"), Notices{.userData = true});
    EXPECT_EQ(store.dayAt(0).note(), full);
    EXPECT_EQ(newLine(), full);
    EXPECT_EQ(note(std::string(510, 'x')), Notices{.userData = true});
    EXPECT_EQ(newLine().size(), 512u);
}

}  // namespace
}  // namespace nutrovex
