#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "foods/DayFoods.h"
#include "forms/foods/CopyToForm.h"
#include "session/SessionTestUtil.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

using namespace test;
using Field = CopyToForm::Field;

FoodItem food(const char* name, uint16_t group, uint16_t meal, float calories) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.group = group;
    f.meal = meal;
    f.loggedFlag = 1;
    f.setReference({1, ServingUnit::Item, 0});
    f.setServing({1, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    return f;
}

// Zerbu's 21 November 2002: a bagel and tea for breakfast, an apple as a snack, a run; Ann is
// listed beside Zerbu with an empty logbook.
class CopyToFormTest : public SessionRoot {
protected:
    void SetUp() override {
        session = started();
        ASSERT_TRUE(session->initialLoad().ok());
        ASSERT_TRUE(session->addUser("Ann").ok());
        ASSERT_TRUE(session->switchUser("Zerbu").ok());
        DayRecord* day = session->days().ensureCurrentRecord();
        ASSERT_NE(day, nullptr);
        for (const FoodItem& f :
             {food("Bagel", 5, 0, 245), food("Tea", 6, 0, 2), food("Apple", 4, 3, 80)}) {
            ASSERT_NE(insertLoggedFood(*day, f, f.group, kSortByMeal), kNoPosition);
        }
        ExerciseEntry run;
        run.name = "Running";
        run.minutes = 30;
        run.calories = 300;
        ASSERT_NE(day->appendExercise(run), kNoPosition);
    }

    const DayRecord* zerbuDay(int d) {
        return session->store().dayOf(CalendarDate::fromDmy(d, 11, 2002));
    }

    std::unique_ptr<Session> session;
};

TEST_F(CopyToFormTest, OffersTheSelectionTheListsMealsAndTheWholeDay) {
    const CopyToForm grid(*session, 5, {food("Bagel", 5, 0, 245)}, CopyChoice::Selected);
    const CopyToView v = grid.view();
    EXPECT_EQ(v.from,
              "From Thursday November 21, 2002 of Zerbu, the list Bread, Cereal, Rice, Pasta");
    EXPECT_EQ(v.choices,
              (std::vector<std::string>{"The selected foods (1)", "Breakfast (1 food)",
                                        "Lunch (0 foods)", "Dinner (0 foods)", "Snack (0 foods)",
                                        "The whole day (3 foods, 1 exercise)"}));
    EXPECT_EQ(v.choice, 0);
    EXPECT_EQ(v.date, "Friday November 22, 2002");  // the next day
    EXPECT_EQ(v.people, (std::vector<std::string>{"Ann", "Zerbu"}));
    EXPECT_EQ(v.person, 1);  // the open person
    EXPECT_TRUE(v.canCopy);

    // From the logbook: every group's meals, the whole day chosen; an empty meal copies nothing.
    CopyToForm logbook(*session, kAllFoodsGroup, {}, CopyChoice::Selected);
    const CopyToView all = logbook.view();
    EXPECT_EQ(all.choices.front(), "Breakfast (2 foods)");
    EXPECT_EQ(all.choices[static_cast<std::size_t>(all.choice)],
              "The whole day (3 foods, 1 exercise)");
    (void)logbook.edit(Field::What, "Lunch (0 foods)");
    EXPECT_FALSE(logbook.view().canCopy);
    EXPECT_EQ(logbook.command(CopyToForm::Command::Copy), Outcome{});
}

TEST_F(CopyToFormTest, ABreakfastGoesToAnyDateOfTheOpenPersonWithFreshKeys) {
    CopyToForm form(*session, kAllFoodsGroup, {}, CopyChoice::Breakfast);
    form.pickDate(CalendarDate::fromDmy(3, 12, 2002));
    const Outcome copied = form.command(CopyToForm::Command::Copy);
    EXPECT_FALSE(copied.message);
    EXPECT_TRUE(copied.notices.userData);
    EXPECT_TRUE(copied.notices.dayCreated);
    EXPECT_EQ(form.view().result, "Copied 2 foods to Tuesday December 3, 2002 of Zerbu.");
    const DayRecord* target = session->store().dayOf(CalendarDate::fromDmy(3, 12, 2002));
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(target->group(5).size(), 1u);
    EXPECT_EQ(target->group(6).size(), 1u);
    EXPECT_TRUE(target->exercises().empty());
    EXPECT_NE(target->group(5)[0].key, zerbuDay(21)->group(5)[0].key);
    EXPECT_EQ(form.close(), SavePoint::UserData);
}

TEST_F(CopyToFormTest, TheWholeDayGoesToAnotherPersonAndIsSavedAtOnce) {
    CopyToForm form(*session, kAllFoodsGroup, {}, CopyChoice::WholeDay);
    (void)form.edit(Field::Person, "Ann");
    const Outcome copied = form.command(CopyToForm::Command::Copy);
    EXPECT_FALSE(copied.message);
    EXPECT_FALSE(copied.notices.userData);  // nothing of Zerbu's changed
    EXPECT_EQ(form.view().result,
              "Copied 3 foods and 1 exercise to Friday November 22, 2002 of Ann.");
    UserStore ann(clock);
    ann.dataFilePath = userFolder("Ann") / "UserDB.ddb";
    ASSERT_TRUE(loadUser(ann).ok());
    const DayRecord* day = ann.dayOf(CalendarDate::fromDmy(22, 11, 2002));
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->exercises().size(), 1u);
    EXPECT_EQ(day->group(4).size(), 1u);
}

TEST_F(CopyToFormTest, AnotherPersonsUnreadableLogbookIsRefusedAndKept) {
    const auto annFile = userFolder("Ann") / "UserDB.ddb";
    std::vector<uint8_t> bytes = fileBytes(annFile);
    bytes.resize(bytes.size() - 3);  // cut short
    writeFile(annFile, std::string(bytes.begin(), bytes.end()));

    CopyToForm form(*session, kAllFoodsGroup, {}, CopyChoice::WholeDay);
    (void)form.edit(Field::Person, "Ann");
    const Outcome refused = form.command(CopyToForm::Command::Copy);
    ASSERT_TRUE(refused.message);
    EXPECT_EQ(refused.message->caption, "Copy To");
    EXPECT_NE(refused.message->text.find("nothing was copied to"), std::string::npos);
    EXPECT_EQ(form.view().result, "");
    EXPECT_EQ(fileBytes(annFile), bytes);
}

}  // namespace
}  // namespace nutrovex
