#include <gtest/gtest.h>

#include <string>

#include "calc/Bmr.h"
#include "logbook/Logbook.h"
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
    WeighIn weighIn{cursor};
    Journal journal{cursor};
};

TEST_F(WeighInTest, NothingBelowOneCreatesADay) {
    for (const char* text : {"", "0", "-5", "abc"}) {
        EXPECT_EQ(weighIn.weightEdited(text), Notices{}) << text;
        EXPECT_TRUE(store.days().empty()) << text;
        EXPECT_FALSE(store.modified) << text;
    }
}

TEST_F(WeighInTest, AWeightCreatesTheDayAndSettlesItsBmr) {
    EXPECT_EQ(weighIn.weightEdited("180"), (Notices{.userData = true, .dayCreated = true}));
    ASSERT_EQ(store.days().size(), 1u);
    const DayRecord& day = store.dayAt(0);
    EXPECT_FLOAT_EQ(day.weight(), 180.0f);
    EXPECT_EQ(day.level(), 2);  // the profile's default
    EXPECT_EQ(day.bmr(), 2234);
    EXPECT_EQ(day.flags() & kDayFlagWeight, kDayFlagWeight);
    EXPECT_EQ(weighIn.view().weight, "180");

    Logbook logbook(cursor);
    EXPECT_EQ(logbook.figures()->weight, "180  lbs");
}

TEST_F(WeighInTest, ZeroErasesTheWeightOfAnExistingDay) {
    (void)weighIn.weightEdited("150");
    EXPECT_EQ(weighIn.weightEdited("0"), (Notices{.userData = true, .dayCreated = true}));
    const DayRecord& day = store.dayAt(0);
    EXPECT_LT(day.weight(), 0.0f);
    EXPECT_EQ(day.level(), 0);
    EXPECT_EQ(day.bmr(), 0);
    EXPECT_EQ(weighIn.view().weight, "");
    Logbook logbook(cursor);
    EXPECT_EQ(logbook.figures()->weight, "---  lbs");
    EXPECT_EQ(logbook.figures()->bmr, "0");
}

TEST_F(WeighInTest, AManualBmrSurvivesANewWeight) {
    (void)weighIn.weightEdited("150");
    DayRecord& day = store.dayAt(0);
    ASSERT_TRUE(day.setLevel(kLevelManual));
    ASSERT_TRUE(day.setBmr(1234));
    (void)weighIn.weightEdited("160");
    EXPECT_EQ(day.bmr(), 1234);
    EXPECT_FLOAT_EQ(day.weight(), 160.0f);
}

TEST_F(WeighInTest, KilogramsAreShownAndStoredInPounds) {
    ASSERT_TRUE(store.profile.setUnits(1));
    EXPECT_EQ(weighIn.view(), (WeighInView{"Saturday May 4, 2002", "", "kg"}));

    (void)weighIn.weightEdited("70");
    EXPECT_NEAR(store.dayAt(0).weight(), 154.3236f, 0.001f);
    EXPECT_EQ(weighIn.view().weight, "70");
}

TEST_F(WeighInTest, MetricWeightsReadBackAsTyped) {
    ASSERT_TRUE(store.profile.setUnits(1));
    Logbook logbook(cursor);
    for (int typed = 1; typed <= 999; ++typed) {
        const std::string text = std::to_string(typed);
        (void)weighIn.weightEdited(text);
        ASSERT_EQ(weighIn.view().weight, text);
        ASSERT_EQ(logbook.figures()->weight, text + "  kg");
    }
}

TEST_F(WeighInTest, MoreThanThreeDigitsAreKeptTo999) {
    for (const bool metric : {false, true}) {
        ASSERT_TRUE(store.profile.setUnits(metric ? 1 : 0));
        (void)weighIn.weightEdited("1500");
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
    EXPECT_EQ(journal.load(), "Enter daily notes here.");
    EXPECT_EQ(journal.textChanged("Ran to the lake"), Notices{});
    EXPECT_TRUE(store.days().empty());
    EXPECT_FALSE(store.modified);
    EXPECT_EQ(journal.enterPressed("Ran"), "Ran\r\n");
    EXPECT_TRUE(store.days().empty());
}

TEST_F(WeighInTest, TheJournalWritesIntoAnExistingDay) {
    (void)weighIn.weightEdited("150");
    EXPECT_EQ(journal.load(), "");
    EXPECT_EQ(journal.textChanged("Ran to the lake"), Notices{.userData = true});
    EXPECT_EQ(store.dayAt(0).note(), "Ran to the lake");
    // Enter always appends at the very end, whatever the editor held around the caret.
    EXPECT_EQ(journal.enterPressed("Ran to\r\n the lake"), "Ran to the lake\r\n");
    EXPECT_EQ(store.dayAt(0).note(), "Ran to the lake\r\n");
    EXPECT_EQ(journal.load(), "Ran to the lake\r\n");
}

TEST_F(WeighInTest, TheNoteStopsAt512Characters) {
    (void)weighIn.weightEdited("150");
    const std::string full(512, 'x');
    EXPECT_EQ(journal.textChanged(full + "y"), Notices{.userData = true});
    EXPECT_EQ(store.dayAt(0).note(), full);
    EXPECT_EQ(journal.enterPressed(full), full);
    EXPECT_EQ(journal.textChanged(std::string(510, 'x')), Notices{.userData = true});
    EXPECT_EQ(journal.enterPressed("").size(), 512u);
}

}  // namespace
}  // namespace nutrovex
