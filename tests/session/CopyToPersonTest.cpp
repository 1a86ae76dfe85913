#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "SessionTestUtil.h"
#include "calc/Totals.h"
#include "foods/DayCopy.h"
#include "foods/DayFoods.h"
#include "session/CopyToPerson.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

using namespace test;
namespace fs = std::filesystem;

const CalendarDate kToday = CalendarDate::fromDmy(21, 11, 2002);
const CalendarDate kTomorrow = CalendarDate::fromDmy(22, 11, 2002);

FoodItem food(const char* name, uint16_t group, float calories) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.group = group;
    f.loggedFlag = 1;
    f.setReference({1, ServingUnit::Item, 0});
    f.setServing({2, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    return f;
}

class CopyToPersonTest : public SessionRoot {
protected:
    void SetUp() override {
        session = started();
        ASSERT_TRUE(session->initialLoad().ok());
        ASSERT_TRUE(session->users().add("Ann").ok());
        // Ann's logbook: one day, her counter at 70.
        UserStore ann(clock);
        ann.userFolderPath = userFolder("Ann");
        ann.dataFilePath = annFile;
        ann.header.keyCounter.value = 70;
        auto day = std::make_unique<DayRecord>(kToday);
        ASSERT_NE(insertLoggedFood(*day, food("Rice", 5, 200), 5, kSortByMeal), kNoPosition);
        ann.insertDay(std::move(day));
        ASSERT_TRUE(saveUser(ann).ok());
        annBefore = fileBytes(annFile);
    }

    std::unique_ptr<Session> session;
    fs::path annFile = userFolder("Ann") / "UserDB.ddb";
    std::vector<uint8_t> annBefore;
    const std::vector<FoodItem> meal = {food("Bagel", 5, 245), food("Tea", 6, 2)};
    const std::vector<ExerciseEntry> none;
};

TEST_F(CopyToPersonTest, AnotherPersonsDayGetsTheFoodsAndIsSavedAtOnce) {
    const CopyToPersonResult r = copyToPerson(*session, "Ann", kToday, meal, none);
    ASSERT_TRUE(r.status.ok()) << r.status.message();
    EXPECT_EQ(r.report.foodsCopied, 2u);
    EXPECT_FALSE(r.report.notices.any());  // nothing of the open person changed
    EXPECT_FALSE(session->userDataModified());
    EXPECT_EQ(session->openUserName(), "Zerbu");

    UserStore ann(clock);
    ann.dataFilePath = annFile;
    ASSERT_TRUE(loadUser(ann).ok());
    ASSERT_EQ(ann.days().size(), 1u);
    const DayRecord& day = *ann.days()[0];
    EXPECT_EQ(day.allFoods().size(), 3u);
    ASSERT_EQ(day.group(6).size(), 1u);
    EXPECT_EQ(day.group(6)[0].name, "Tea");
    EXPECT_FLOAT_EQ(day.group(5)[0].shownNutrient(kCalories), 490.0f);  // a bagel, twice
    // Ann's own counter gave the keys, and her totals were stored with the foods.
    EXPECT_EQ(day.group(5)[0].key.value, 71u);
    EXPECT_EQ(ann.header.keyCounter.value, 72u);
    EXPECT_FLOAT_EQ(day.totals()[kCalories], 400.0f + 490.0f + 4.0f);  // two of each
    EXPECT_EQ(filesIn(userFolder("Ann")), std::vector<std::string>{"UserDB.ddb"});
}

TEST_F(CopyToPersonTest, ALogbookThatCannotBeReadWholeIsNeitherChangedNorWritten) {
    // A file whose day count promises more than it holds.
    std::vector<uint8_t> broken = annBefore;
    broken.resize(broken.size() - 7);
    {
        std::ofstream out(annFile, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(broken.data()),
                  static_cast<std::streamsize>(broken.size()));
    }
    const CopyToPersonResult r = copyToPerson(*session, "Ann", kTomorrow, meal, none);
    ASSERT_FALSE(r.status.ok());
    EXPECT_EQ(r.status.message().rfind("UserDB.ddb: nothing was copied to 'Ann', whose logbook "
                                       "could not be read whole (UserDB.ddb: ",
                                       0),
              0u)
        << r.status.message();
    EXPECT_EQ(r.report.foodsCopied, 0u);
    EXPECT_EQ(fileBytes(annFile), broken);
    EXPECT_EQ(filesIn(userFolder("Ann")), std::vector<std::string>{"UserDB.ddb"});
    // The open person is untouched too.
    EXPECT_FALSE(session->userDataModified());
    EXPECT_EQ(session->store().dayOf(kTomorrow), nullptr);
}

TEST_F(CopyToPersonTest, TheOpenPersonIsCopiedIntoInTheSession) {
    const CopyToPersonResult r = copyToPerson(*session, "Zerbu", kTomorrow, meal, none);
    ASSERT_TRUE(r.status.ok());
    EXPECT_TRUE(r.report.dayCreated);
    EXPECT_TRUE(r.report.notices.userData);
    EXPECT_TRUE(session->userDataModified());  // saved at the next save point
    ASSERT_NE(session->store().dayOf(kTomorrow), nullptr);
    EXPECT_EQ(session->store().dayOf(kTomorrow)->allFoods().size(), 2u);
    EXPECT_EQ(fileBytes(annFile), annBefore);
}

TEST_F(CopyToPersonTest, OnlyListedPeopleAreCopiedTo) {
    fs::create_directories(userFolder("Bob"));
    for (const char* name : {"Bob", "..", ""}) {
        const CopyToPersonResult r = copyToPerson(*session, name, kToday, meal, none);
        ASSERT_FALSE(r.status.ok()) << name;
        EXPECT_NE(r.status.message().find("is not a listed user"), std::string::npos);
    }
    EXPECT_FALSE(fs::exists(userFolder("Bob") / "UserDB.ddb"));
}

TEST_F(CopyToPersonTest, APersonWithoutALogbookYetGetsOne) {
    ASSERT_TRUE(session->users().add("Cy").ok());
    const CopyToPersonResult r = copyToPerson(*session, "Cy", kToday, meal, none);
    ASSERT_TRUE(r.status.ok()) << r.status.message();
    UserStore cy(clock);
    cy.dataFilePath = userFolder("Cy") / "UserDB.ddb";
    ASSERT_TRUE(loadUser(cy).ok());
    ASSERT_EQ(cy.days().size(), 1u);
    EXPECT_EQ(cy.days()[0]->allFoods().size(), 2u);
    EXPECT_EQ(cy.header.keyCounter.value, 2u);
}

}  // namespace
}  // namespace nutrovex
