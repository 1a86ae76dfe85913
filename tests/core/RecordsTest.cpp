#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/DayRecord.h"
#include "core/FoodItem.h"
#include "core/PackedKey.h"
#include "core/StoredSize.h"
#include "core/UserProfile.h"
#include "core/UserStore.h"

namespace nutrovex {
namespace {

CalendarDate dmy(int d, int m, int y) {
    return CalendarDate::fromDmy(d, m, y);
}

// A profile whose BMR can be computed: 30-year-old man, 70 in.
UserProfile measuredProfile() {
    UserProfile p(dmy(1, 1, 2002));
    p.setHeight(70.0f);
    p.setAge(30);
    return p;
}

TEST(UserProfile, NewProfileIsAFullReset) {
    const UserProfile p(dmy(21, 11, 2026));
    EXPECT_EQ(p.flags(), 0xFFC1);
    EXPECT_EQ(p.age(), -1);
    EXPECT_LT(p.height(), 0.0f);
    EXPECT_LT(p.startWeight(), 0.0f);
    EXPECT_EQ(p.defaultLevel(), 2);
    EXPECT_EQ(p.startDate().day, 21);
    EXPECT_EQ(p.goalDate().day, 22);
}

TEST(UserProfile, SettersRefuseOutOfRangeAndKeepTheOldValue) {
    UserProfile p(dmy(1, 1, 2002));
    EXPECT_TRUE(p.setDisplayName(std::string(40, 'a')));
    EXPECT_FALSE(p.setDisplayName(std::string(41, 'b')));
    EXPECT_EQ(p.displayName(), std::string(40, 'a'));

    EXPECT_TRUE(p.setAge(99));
    EXPECT_FALSE(p.setAge(100));
    EXPECT_EQ(p.age(), 99);
    EXPECT_TRUE(p.setAge(-5));
    EXPECT_EQ(p.age(), -1);

    EXPECT_TRUE(p.setGender(1));
    EXPECT_FALSE(p.setGender(2));
    EXPECT_EQ(p.gender(), 1);

    EXPECT_FALSE(p.setDefaultLevel(0));
    EXPECT_FALSE(p.setDefaultLevel(6));
    EXPECT_TRUE(p.setDefaultLevel(5));
    EXPECT_EQ(p.defaultLevel(), 5);
    EXPECT_FALSE(p.setUnits(2));
}

TEST(UserProfile, SettersMarkOnlyRealChanges) {
    struct Case {
        const char* what;
        void (*change)(UserProfile&);
        uint16_t flag;
    };
    const Case cases[] = {
        {"height", [](UserProfile& p) { p.setHeight(70.0f); }, kFlagHeight},
        {"age", [](UserProfile& p) { p.setAge(30); }, kFlagAge},
        {"gender", [](UserProfile& p) { (void)p.setGender(1); }, kFlagGender},
        {"start weight", [](UserProfile& p) { p.setStartWeight(180.0f); }, kFlagStartWeight},
        {"start date", [](UserProfile& p) { p.setStartDate(dmy(5, 1, 2002)); }, kFlagStartDate},
        {"goal weight", [](UserProfile& p) { p.setGoalWeight(170.0f); }, kFlagGoalWeight},
        {"goal date", [](UserProfile& p) { p.setGoalDate(dmy(5, 3, 2002)); }, kFlagGoalDate},
        {"plan",
         [](UserProfile& p) {
             p.setPlan({1, 10, 35, 1000});
         },
         kFlagGoalPlan},
        {"level", [](UserProfile& p) { (void)p.setDefaultLevel(3); }, kFlagDefaultLevel},
        {"units", [](UserProfile& p) { (void)p.setUnits(1); }, kFlagUnits},
    };
    for (const Case& c : cases) {
        UserProfile p(dmy(1, 1, 2002));
        p.rawFields().flags = 0;
        c.change(p);
        EXPECT_EQ(p.flags(), c.flag) << c.what;
    }
    // Storing what is already there marks nothing.
    UserProfile p(dmy(1, 1, 2002));
    p.rawFields().flags = 0;
    p.setAge(-1);
    (void)p.setDefaultLevel(2);
    p.setStartDate(dmy(1, 1, 2002));
    (void)p.setGender(0);
    EXPECT_EQ(p.flags(), 0);
}

TEST(UserProfile, ResetsSetTheirFixedFlagWords) {
    UserProfile p = measuredProfile();
    p.setStartWeight(180.0f);
    p.rawFields().flags = 0;
    p.resetPersonal();
    EXPECT_EQ(p.flags(), 0xE080);
    EXPECT_EQ(p.age(), -1);
    EXPECT_EQ(p.startWeight(), 180.0f);  // goals untouched

    p.rawFields().flags = 0;
    p.resetGoals(dmy(31, 12, 2002));
    EXPECT_EQ(p.flags(), 0x1F00);
    EXPECT_LT(p.startWeight(), 0.0f);
    EXPECT_EQ(p.goalDate().year, 2003);
    EXPECT_EQ(p.goalDate().day, 1);

    p.rawFields().flags = 0x0002;
    p.reset(dmy(1, 1, 2002));
    EXPECT_EQ(p.flags(), 0xFFC1);  // a fixed word, not the union of the two resets
}

TEST(DayRecord, LevelAndBmrSettersRefuseOutOfRange) {
    DayRecord day(dmy(3, 5, 2002));
    EXPECT_FALSE(day.setLevel(0));
    EXPECT_FALSE(day.setLevel(6));
    EXPECT_EQ(day.flags(), 0);
    EXPECT_TRUE(day.setLevel(5));
    EXPECT_EQ(day.flags(), kDayFlagLevel);
    EXPECT_FALSE(day.setBmr(10000));
    EXPECT_FALSE(day.setBmr(-1));
    EXPECT_TRUE(day.setBmr(9999));
    EXPECT_EQ(day.bmr(), 9999);
}

TEST(DayRecord, ExercisesByPosition) {
    DayRecord day(dmy(3, 5, 2002));
    ExerciseEntry run;
    run.name = "Run";
    EXPECT_EQ(day.appendExercise(run), 0);
    EXPECT_EQ(day.appendExercise(ExerciseEntry{}), 1);
    EXPECT_EQ(day.exercises()[1].type, 26);
    EXPECT_EQ(day.exercises()[1].variant, -1);
    EXPECT_FALSE(day.removeExercise(2));
    EXPECT_TRUE(day.removeExercise(0));
    EXPECT_EQ(day.exercises().size(), 1u);
    EXPECT_FALSE(day.replaceExercise(1, run));
}

TEST(DayRecord, AFullDayTakesNoLongerExercise) {
    DayRecord day(dmy(3, 5, 2002));
    ExerciseEntry run;
    run.name = "Run";
    while (day.appendExercise(run) != kNoPosition) {
    }
    const std::size_t full = day.exercises().size();
    EXPECT_FALSE(dayHasRoomFor(day, exerciseSize(run)));
    ExerciseEntry longer = run;
    longer.name = "Running, cross-country, uphill and in snow";  // grows more than is left
    EXPECT_FALSE(day.replaceExercise(0, longer));
    EXPECT_EQ(day.exercises()[0].name, "Run");
    ExerciseEntry same = run;
    same.minutes = 45;  // the same size still goes in
    EXPECT_TRUE(day.replaceExercise(0, same));
    EXPECT_EQ(day.exercises()[0].minutes, 45);
    EXPECT_EQ(day.exercises().size(), full);
}

TEST(PackedKey, SerialWrapsWithoutTouchingTheUpperFields) {
    PackedKey counter{0xFFFFFFFFu};  // every upper field set, serial at 262143
    const PackedKey issued = nextKey(counter);
    EXPECT_EQ(issued.serial(), 0u);
    EXPECT_EQ(issued.field1(), 1u);
    EXPECT_EQ(issued.field2(), 0xFu);
    EXPECT_EQ(issued.field3(), 0xFu);
    EXPECT_EQ(issued.field4(), 0x1Fu);
    EXPECT_EQ(counter, issued);
    EXPECT_EQ(nextKey(counter).value, 0xFFFC0001u);
}

TEST(UserStore, DayListKeepsDateOrderAndSameDatesInInsertionOrder) {
    FixedClock clock(dmy(21, 11, 2026));
    UserStore store(clock);
    auto day = [](int d, int m, int y, uint16_t tag) {
        auto r = std::make_unique<DayRecord>(dmy(d, m, y));
        r->setWater(tag);
        return r;
    };
    EXPECT_EQ(store.insertDay(day(5, 5, 2002, 1)), 0);
    EXPECT_EQ(store.insertDay(day(3, 5, 2002, 2)), 0);
    EXPECT_EQ(store.insertDay(day(1, 1, 2003, 3)), 2);
    EXPECT_EQ(store.insertDay(day(3, 5, 2002, 4)), 1);  // after the listed day of that date
    EXPECT_EQ(store.insertDay(day(31, 12, 2001, 5)), 0);
    EXPECT_EQ(store.dayCount, 5);
    const uint16_t expected[] = {5, 2, 4, 1, 3};
    for (Position i = 0; i < 5; ++i) {
        EXPECT_EQ(store.dayAt(i).water(), expected[i]) << i;
    }
    EXPECT_EQ(store.findDay(dmy(3, 5, 2002)), 1);
    EXPECT_EQ(store.findDay(dmy(4, 5, 2002)), kNoPosition);
    EXPECT_EQ(store.dayOf(dmy(1, 1, 2003))->water(), 3);

    EXPECT_TRUE(store.removeDay(0));
    EXPECT_FALSE(store.removeDay(4));
    EXPECT_EQ(store.dayCount, 4);
    store.reset(true);
    EXPECT_EQ(store.dayCount, 0);
    EXPECT_TRUE(store.days().empty());
    EXPECT_EQ(store.chartLabel(8), "");
}

TEST(FoodItem, RatioUsesTheReferenceOfTheServingsFamily) {
    FoodItem f;
    f.setReference({100.0f, ServingUnit::Gram, 0});  // 100 g: weight reference
    f.setReference({1.0f, ServingUnit::Cup, 0},
                   true);  // 1 cup: volume reference, keeping the other
    EXPECT_EQ(f.ref1, (ServingQuantity{100.0f, ServingUnit::Gram, 0}));
    EXPECT_EQ(f.ref2, (ServingQuantity{1.0f, ServingUnit::Cup, 0}));
    f.setServing({2.0f, ServingUnit::Ounce, 0});  // 2 oz against 100 g
    EXPECT_NEAR(f.ratio, 0.567f, 0.0005f);
    f.setServing({0.5f, ServingUnit::Cup, 0});  // half a cup against the cup
    EXPECT_EQ(f.ratio, 0.5f);
    f.setServing(
        {3.0f, ServingUnit::Item, 0});  // items measure against the volume-or-item reference
    EXPECT_EQ(f.ratio, 1.0f);           // cup to item is impossible: factor 1

    f.setReference(
        {50.0f, ServingUnit::Gram, 0});  // without keeping, the volume reference is cleared
    EXPECT_EQ(f.ref2, ServingQuantity{});
}

TEST(FoodItem, NutrientsAreClampedOnEveryWrite) {
    FoodItem f;
    f.setNutrient(kCalories, 12000.0f);
    f.setNutrient(kFat, 1500.0f);
    f.setNutrient(kProtein, -3.0f);
    f.setNutrient(kFiber, 2.5f);
    EXPECT_EQ(f.nutrients[kCalories], 10000.0f);
    EXPECT_EQ(f.nutrients[kFat], 1000.0f);
    EXPECT_EQ(f.nutrients[kProtein], 0.0f);
    EXPECT_EQ(f.nutrients[kFiber], 2.5f);
}

TEST(FoodCategory, CopyReplacesTheTargetsFoods) {
    FoodCategory source;
    source.key.value = 7;
    source.byte = 3;
    source.name = "Bagels";
    source.foods.resize(2);
    source.foods[0].name = "Plain";
    source.foods[1].name = "Onion";
    FoodCategory target;
    target.foods.resize(5);
    target.copyFrom(source);
    EXPECT_EQ(target.key.value, 7u);
    EXPECT_EQ(target.byte, 3);
    EXPECT_EQ(target.name, "Bagels");
    ASSERT_EQ(target.foods.size(), 2u);
    EXPECT_EQ(target.foods[1].name, "Onion");
}

}  // namespace
}  // namespace nutrovex
