#include <gtest/gtest.h>

#include <set>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/DayFoods.h"
#include "foods/FoodClipboard.h"
#include "foods/FoodLogRows.h"
#include "foods/FoodTestUtil.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

FoodItem logged(const char* name, uint16_t meal, uint16_t group, uint32_t key) {
    return test::loggedFood(name, meal, group, key, 100.0f);
}

// "name/meal" of each entry in presented order.
std::vector<std::string> shown(const FoodList& list, uint16_t sortMode) {
    std::vector<std::string> out;
    for (const Position p : presentedOrder(list, sortMode)) {
        out.push_back(list[p].name.str() + "/" + std::to_string(list[p].meal));
    }
    return out;
}

std::vector<uint32_t> keys(const FoodList& list) {
    std::vector<uint32_t> out;
    for (const FoodItem& f : list) {
        out.push_back(f.key.value);
    }
    return out;
}

TEST(DayFoods, ListsKeepMealOrderAndAlphabeticalOrderAtOnce) {
    FoodList list;
    const struct {
        const char* name;
        uint16_t meal;
        Position alphaPos;  // where it shows alphabetically right after its insert
    } inserts[] = {
        {"Soup", 1, 0},  {"Toast", 0, 1}, {"egg", 0, 0},
        {"Apple", 3, 0}, {"apple", 1, 0}, {"", 2, 0},
    };
    uint32_t key = 1;
    for (const auto& i : inserts) {
        EXPECT_EQ(insertOrdered(list, logged(i.name, i.meal, 0, key++), kSortAlphabetical),
                  i.alphaPos)
            << i.name;
    }
    EXPECT_EQ(shown(list, kSortByMeal),
              (std::vector<std::string>{"egg/0", "Toast/0", "apple/1", "Soup/1", "/2", "Apple/3"}));
    EXPECT_EQ(shown(list, kSortAlphabetical),
              (std::vector<std::string>{"/2", "apple/1", "Apple/3", "egg/0", "Soup/1", "Toast/0"}));
    // Any mode other than 0 presents names.
    EXPECT_EQ(shown(list, 7), shown(list, kSortAlphabetical));
    for (Position p = 0; p < list.size(); ++p) {
        EXPECT_EQ(
            presentedIndexOf(list, kSortAlphabetical, listIndexOf(list, kSortAlphabetical, p)), p);
    }
}

TEST(DayFoods, TheNewerOfTwoEqualFoodsStandsFirst) {
    DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
    ASSERT_NE(insertLoggedFood(day, logged("Bagel", 0, 5, 1), 5, kSortByMeal), kNoPosition);
    ASSERT_NE(insertLoggedFood(day, logged("Bagel", 0, 5, 2), 5, kSortByMeal), kNoPosition);
    ASSERT_NE(insertLoggedFood(day, logged("Bagel", 1, 5, 3), 5, kSortByMeal), kNoPosition);
    EXPECT_EQ(keys(day.group(5)), (std::vector<uint32_t>{2, 1, 3}));
    EXPECT_EQ(keys(day.allFoods()), (std::vector<uint32_t>{2, 1, 3}));
}

TEST(DayFoods, AlphabeticallyTheNewerOfTwoEqualNamesStandsFirst) {
    // Whatever their meals, the food logged last shows first and is the logged position.
    for (const auto& [firstMeal, secondMeal] : {std::pair{0, 3}, std::pair{3, 0}}) {
        DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
        const auto first = static_cast<uint16_t>(firstMeal);
        const auto second = static_cast<uint16_t>(secondMeal);
        ASSERT_NE(insertLoggedFood(day, logged("Tea", 1, 7, 1), 7, kSortAlphabetical), kNoPosition);
        EXPECT_EQ(insertLoggedFood(day, logged("Coffee", first, 7, 2), 7, kSortAlphabetical), 0);
        EXPECT_EQ(insertLoggedFood(day, logged("Coffee", second, 7, 3), 7, kSortAlphabetical), 0);
        for (const FoodList* list : {&day.group(7), &day.allFoods()}) {
            const std::vector<std::string> want = {"Coffee/" + std::to_string(second),
                                                   "Coffee/" + std::to_string(first), "Tea/1"};
            EXPECT_EQ(shown(*list, kSortAlphabetical), want) << firstMeal;
            EXPECT_EQ(presentedFood(day, list == &day.allFoods() ? kAllFoodsGroup : 7,
                                    kSortAlphabetical, 0)
                          ->key.value,
                      3u);
        }
    }
}

TEST(DayFoods, EntriesReadFromAFileKeepMealOrderUntilANewerOneComes) {
    FoodList list;
    // As read from a file: in meal order, never inserted.
    list.push_back(logged("Milk", 0, 1, 1));
    list.push_back(logged("Milk", 2, 1, 2));
    EXPECT_EQ(shown(list, kSortAlphabetical), (std::vector<std::string>{"Milk/0", "Milk/2"}));
    EXPECT_EQ(insertOrdered(list, logged("Milk", 1, 1, 3), kSortAlphabetical), 0);
    EXPECT_EQ(shown(list, kSortAlphabetical),
              (std::vector<std::string>{"Milk/1", "Milk/0", "Milk/2"}));
    for (Position p = 0; p < list.size(); ++p) {
        EXPECT_EQ(
            presentedIndexOf(list, kSortAlphabetical, listIndexOf(list, kSortAlphabetical, p)), p);
    }
}

TEST(DayFoods, TheAllFoodsListOfALoadedDayShowsBreakfastLunchDinnerSnack) {
    DayRecord day(CalendarDate::fromDmy(10, 3, 2026));
    // As read from a file: each group's list in meal order, the groups one after the other.
    day.group(2).push_back(logged("Egg", 0, 2, 1));
    day.group(2).push_back(logged("Trout", 2, 2, 2));
    day.group(4).push_back(logged("Pear", 1, 4, 3));
    day.group(4).push_back(logged("Apple", 3, 4, 4));
    day.group(5).push_back(logged("Bagel", 0, 5, 5));
    const std::vector<std::string> mealOrder = {"Bagel/0", "Egg/0", "Pear/1", "Trout/2", "Apple/3"};
    day.deferAllFoods();
    EXPECT_EQ(shown(day.allFoods(), kSortByMeal), mealOrder);
    rebuildAllFoods(day);
    EXPECT_EQ(shown(day.allFoods(), kSortByMeal), mealOrder);
    // A food logged later finds its meal's place.
    EXPECT_EQ(insertLoggedFood(day, logged("Cocoa", 3, 6, 6), 6, kSortByMeal), 0);
    EXPECT_EQ(shown(day.allFoods(), kSortByMeal).back(), "Cocoa/3");
    EXPECT_EQ(shown(day.allFoods(), kSortByMeal)[4], "Apple/3");
}

TEST(DayFoods, InsertOrderSurvivesRunningOutOfSerials) {
    FoodList list;
    for (uint32_t key = 1; key <= 3; ++key) {
        (void)insertOrdered(list, logged("Rice", 0, 3, key), kSortAlphabetical);
    }
    list[1].insertSerial = UINT16_MAX;  // as after many inserts and removals: the newest
    const uint32_t newest = list[1].key.value;
    EXPECT_EQ(insertOrdered(list, logged("Rice", 0, 3, 9), kSortAlphabetical), 0);
    const std::vector<Position> order = presentedOrder(list, kSortAlphabetical);
    ASSERT_EQ(order.size(), 4u);
    EXPECT_EQ(list[order[0]].key.value, 9u);
    EXPECT_EQ(list[order[1]].key.value, newest);
    EXPECT_EQ(list[order[2]].key.value, 3u);
    EXPECT_EQ(list[order[3]].key.value, 1u);
}

TEST(DayFoods, TheTargetGroupDecidesWhichListsPositionIsReturned) {
    DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
    ASSERT_NE(insertLoggedFood(day, logged("Apple", 0, 4, 1), 4, kSortByMeal), kNoPosition);
    ASSERT_NE(insertLoggedFood(day, logged("Beer", 0, 6, 2), 6, kSortByMeal), kNoPosition);
    // "Cod" stands first in group 2 but third in the all-foods list.
    EXPECT_EQ(insertLoggedFood(day, logged("Cod", 0, 2, 3), 2, kSortByMeal), 0);
    EXPECT_EQ(insertLoggedFood(day, logged("Crab", 0, 2, 4), kAllFoodsGroup, kSortByMeal), 3);
    EXPECT_EQ(day.group(2).size(), 2u);
    EXPECT_EQ(day.allFoods().size(), 4u);
    // A food of no valid group is refused and leaves the day alone.
    EXPECT_EQ(insertLoggedFood(day, logged("Odd", 0, 8, 5), kAllFoodsGroup, kSortByMeal),
              kNoPosition);
    EXPECT_EQ(day.allFoods().size(), 4u);
}

TEST(DayFoods, RemovingAnEntryRemovesItsTwinFromEitherSide) {
    DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
    using Log = std::tuple<const char*, int, uint32_t>;
    for (const auto& [name, group, key] :
         {Log{"Rice", 5, 1}, Log{"Rye", 5, 2}, Log{"Milk", 1, 3}, Log{"Rice", 5, 4}}) {
        ASSERT_NE(insertLoggedFood(day, logged(name, 0, static_cast<uint16_t>(group), key), group,
                                   kSortByMeal),
                  kNoPosition);
    }
    ASSERT_EQ(keys(day.group(5)), (std::vector<uint32_t>{4, 1, 2}));
    EXPECT_TRUE(removeLoggedFood(day, 5, kSortByMeal, 1));  // Rice, key 1
    EXPECT_EQ(keys(day.group(5)), (std::vector<uint32_t>{4, 2}));
    EXPECT_EQ(keys(day.allFoods()), (std::vector<uint32_t>{3, 4, 2}));
    EXPECT_TRUE(removeLoggedFood(day, kAllFoodsGroup, kSortAlphabetical, 2));  // Rye
    EXPECT_EQ(keys(day.group(5)), (std::vector<uint32_t>{4}));
    EXPECT_EQ(keys(day.allFoods()), (std::vector<uint32_t>{3, 4}));
    EXPECT_FALSE(removeLoggedFood(day, kAllFoodsGroup, kSortByMeal, 2));
}

TEST(DayFoods, AnEditedEntryMovesToItsNewMealInBothLists) {
    DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
    for (uint32_t k = 1; k <= 3; ++k) {
        const char* names[] = {"", "Egg", "Toast", "Juice"};
        ASSERT_NE(insertLoggedFood(day, logged(names[k], 0, 2, k), 2, kSortByMeal), kNoPosition);
    }
    FoodItem edited = *presentedFood(day, 2, kSortByMeal, 0);  // Egg
    ASSERT_EQ(edited.name.str(), "Egg");
    edited.meal = 2;
    edited.setNutrient(kProtein, 6.0f);
    EXPECT_EQ(replaceLoggedFood(day, 2, kSortByMeal, 0, edited), 2);
    EXPECT_EQ(shown(day.group(2), kSortByMeal),
              (std::vector<std::string>{"Juice/0", "Toast/0", "Egg/2"}));
    EXPECT_EQ(shown(day.allFoods(), kSortByMeal), shown(day.group(2), kSortByMeal));
    EXPECT_FLOAT_EQ(day.allFoods()[2].nutrients[kProtein], 6.0f);
}

class FoodGrid : public ::testing::Test {
protected:
    FoodGrid() : store(clock), days(store) {
        days.setCurrentDate(CalendarDate::fromDmy(3, 5, 2002));
        days.ensureCurrentDay();
        day = days.currentRecord();
    }

    void log(const char* name, uint16_t meal, uint16_t group) {
        ASSERT_NE(insertLoggedFood(*day, logged(name, meal, group, store.nextEntryKey().value),
                                   group, kSortByMeal),
                  kNoPosition);
    }

    FixedClock clock{CalendarDate::fromDmy(3, 5, 2002)};
    UserStore store;
    DayCursor days;
    DayRecord* day = nullptr;
};

TEST_F(FoodGrid, DeletingThreeRowsRemovesThoseEntriesAndTheirTwins) {
    for (const char* n : {"Ham", "Beef", "Cod", "Duck", "Egg"}) {
        log(n, 1, 2);
    }
    log("Apple", 0, 4);
    FoodLogView view{2, kSortAlphabetical, 0};
    // Rows 1..3 alphabetically: Cod, Duck, Egg.
    EXPECT_EQ(deleteFoodRows(*day, view, {3, 3}), Notices{});  // runs past the food rows
    EXPECT_EQ(day->group(2).size(), 5u);
    EXPECT_EQ(deleteFoodRows(*day, view, {1, 3}), Notices{.userData = true});
    EXPECT_EQ(shown(day->group(2), kSortAlphabetical),
              (std::vector<std::string>{"Beef/1", "Ham/1"}));
    EXPECT_EQ(shown(day->allFoods(), kSortAlphabetical),
              (std::vector<std::string>{"Apple/0", "Beef/1", "Ham/1"}));
    EXPECT_EQ(confirmDeleteFoods(),
              (Confirmation{{"Are you sure you want to delete the selected food items",
                             "Delete Food", MessageKind::Question}}));
}

TEST_F(FoodGrid, PastingIntoADayWithoutRoomSaysWhatWasLeftOut) {
    log("Bagel", 0, 5);
    log("Rye", 2, 5);
    FoodClipboard clip;
    clip.copy(*day, {5, kSortByMeal, 0}, {0, 2});
    // Filled with unnamed foods, smaller than either, until the two no longer fit: one still does.
    const std::size_t both = foodSize(clip.foods()[0]) + foodSize(clip.foods()[1]);
    while (dayHasRoomFor(*day, both)) {
        day->group(1).push_back(FoodItem{});
    }
    rebuildAllFoods(*day);
    const std::size_t before = day->allFoods().size();
    const PasteOutcome out = clip.paste(days, {5, kSortByMeal, 0});
    EXPECT_EQ(day->allFoods().size(), before + 1);
    EXPECT_EQ(out.message, dayFullMessage("Paste Food"));
    EXPECT_TRUE(dayHasRoomFor(*day, 0));
}

TEST_F(FoodGrid, PastingIntoAGroupMovesTheFoodsThere) {
    log("Bagel", 0, 5);
    log("Rye", 2, 5);
    FoodClipboard clip;
    EXPECT_FALSE(clip.canPaste());
    clip.copy(*day, {5, kSortByMeal, 0}, {0, 5});  // stops where the rows end
    ASSERT_EQ(clip.foods().size(), 2u);
    // Pasted on another day, shown group 3.
    days.nextDay();
    ASSERT_EQ(days.currentRecord(), nullptr);
    const PasteOutcome out = clip.paste(days, {3, kSortByMeal, 0});
    DayRecord* next = days.currentRecord();
    ASSERT_NE(next, nullptr);
    EXPECT_TRUE(out.complete);
    EXPECT_EQ(out.notices, Notices{.userData = true});
    EXPECT_EQ(out.pasted, 2u);
    EXPECT_FALSE(out.message.has_value());
    ASSERT_EQ(next->group(3).size(), 2u);
    EXPECT_TRUE(next->group(5).empty());
    for (const FoodItem& f : next->group(3)) {
        EXPECT_EQ(f.group, 3);
    }
    EXPECT_EQ(next->allFoods().size(), 2u);
    // While the all-foods list is shown each food keeps its group.
    (void)clip.paste(days, {kAllFoodsGroup, kSortByMeal, 0});
    EXPECT_EQ(next->group(5).size(), 2u);
    EXPECT_EQ(next->allFoods().size(), 4u);

    // Every pasted food is a new entry with a key of its own, shared only with its twin in
    // the all-foods list.
    std::set<uint32_t> keys;
    for (const FoodItem& f : day->allFoods()) {
        keys.insert(f.key.value);
    }
    for (const FoodItem& f : next->allFoods()) {
        EXPECT_TRUE(keys.insert(f.key.value).second) << f.name.str();
    }
    std::multiset<uint32_t> twins;
    for (const int g : {3, 5}) {
        for (const FoodItem& f : next->group(g)) {
            twins.insert(f.key.value);
        }
    }
    std::multiset<uint32_t> all;
    for (const FoodItem& f : next->allFoods()) {
        all.insert(f.key.value);
    }
    EXPECT_EQ(twins, all);
    EXPECT_EQ(store.header.keyCounter.serial(), 6u);  // two logged, four pasted
}

TEST_F(FoodGrid, CutTakesTheRowsAwayWithoutAsking) {
    log("Tea", 0, 6);
    log("Cola", 3, 6);
    FoodClipboard clip;
    EXPECT_EQ(clip.cut(*day, {kAllFoodsGroup, kSortByMeal, 0}, {1, 1}), Notices{.userData = true});
    ASSERT_EQ(clip.foods().size(), 1u);
    EXPECT_EQ(clip.foods()[0].name.str(), "Cola");
    EXPECT_EQ(day->group(6).size(), 1u);
    EXPECT_EQ(day->allFoods().size(), 1u);
}

TEST(FoodLogView, CommandsSetOrFlipTheSortModeAndCycleTheNutrients) {
    FoodLogView view;
    const struct {
        FoodLogCommand command;
        uint16_t sortMode;
        uint16_t nutrientView;
    } steps[] = {
        {FoodLogCommand::SortToggle, 1, 0},     {FoodLogCommand::SortToggle, 0, 0},
        {FoodLogCommand::SortAlphaBlds, 1, 0},  {FoodLogCommand::SortAlphabetical, 1, 0},
        {FoodLogCommand::SortByMeal, 0, 0},     {FoodLogCommand::NutrientToggle, 0, 1},
        {FoodLogCommand::NutrientToggle, 0, 2}, {FoodLogCommand::NutrientToggle, 0, 0},
    };
    for (const auto& s : steps) {
        EXPECT_EQ(applyViewCommand(view, s.command), Notices{.userData = true});
        EXPECT_EQ(view.sortMode, s.sortMode) << static_cast<int>(s.command);
        EXPECT_EQ(view.nutrientView, s.nutrientView) << static_cast<int>(s.command);
    }
    view.sortMode = 2;  // from a mode other than 1 the toggle gives 1
    (void)applyViewCommand(view, FoodLogCommand::SortToggle);
    EXPECT_EQ(view.sortMode, 1);
}

TEST(FoodLogRows, RowsOfADayWithFoodsAndExercises) {
    DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
    FoodItem bagel = logged("Bagel", 0, 5, 1);
    bagel.nutrients = {245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.25f};
    bagel.setServing({1.5f, ServingUnit::Item, 0});  // ratio 1.5
    ASSERT_NE(insertLoggedFood(day, bagel, 5, kSortByMeal), kNoPosition);
    FoodItem odd = logged("Anchovy", 9, 5, 2);     // a meal code with no name
    odd.setServing({2.0f, ServingUnit::Gram, 0});  // grams against an item reference: ratio 1
    ASSERT_NE(insertLoggedFood(day, odd, 5, kSortByMeal), kNoPosition);
    ExerciseEntry run;
    run.name = "Running";
    run.minutes = 30;
    run.calories = 360;
    (void)day.appendExercise(run);

    const FoodLogRows out = foodLogRows(&day, 5, kSortByMeal);
    ASSERT_EQ(out.rows.size(), 7u);
    EXPECT_EQ(out.firstFoodRow, 1);
    EXPECT_EQ(out.foodCount, 2);
    EXPECT_EQ(out.rows[0].text, "Food Log");
    const LogRow& b = out.rows[1];
    EXPECT_EQ(b.text, "Bagel");
    EXPECT_EQ(b.serving, "1.50 item");
    EXPECT_EQ(b.nutrients, (std::array<std::string, 6>{"368  cal", "72.0g  Carb", "3.0g  Fib",
                                                       "15.0g  Prot", "2.2g  Fat", "0.4g  SFat"}));
    EXPECT_EQ(b.meal, "Breakfast");
    EXPECT_EQ(out.rows[2].text, "Anchovy");
    EXPECT_EQ(out.rows[2].serving, "2.00 g");
    EXPECT_EQ(out.rows[2].meal, "");
    EXPECT_EQ(out.rows[3].text, "Totals");
    EXPECT_EQ(out.rows[3].nutrients[kCalories], "468  cal");  // 367.5 + 100, then rounded
    EXPECT_EQ(out.rows[4].text, "Exercise Log");
    EXPECT_EQ(out.rows[5].text, "Running");
    EXPECT_EQ(out.rows[5].minutes, "30 Minutes");
    EXPECT_EQ(out.rows[5].calories, "360 cal");
    EXPECT_EQ(out.rows[6].kind, LogRowKind::ExerciseTotals);
    EXPECT_EQ(out.rows[6].calories, "360 cal");

    // Alphabetical presentation numbers the rows in that order.
    const FoodLogRows alpha = foodLogRows(&day, kAllFoodsGroup, kSortAlphabetical);
    EXPECT_EQ(alpha.rows[1].text, "Anchovy");
    EXPECT_EQ(alpha.rows[1].entry, 0);
}

TEST(FoodLogRows, ADateWithoutFoodsInvitesToInsertOne) {
    for (const bool withRecord : {false, true}) {
        DayRecord day(CalendarDate::fromDmy(3, 5, 2002));
        const FoodLogRows out = foodLogRows(withRecord ? &day : nullptr, 3, kSortByMeal);
        ASSERT_EQ(out.rows.size(), 5u);
        EXPECT_EQ(out.rows[1].text, "Use menu items to insert a food item.");
        EXPECT_EQ(out.firstFoodRow, kNoPosition);
        EXPECT_EQ(out.rows[2].nutrients,
                  (std::array<std::string, 6>{"0  cal", "0.0g  Carb", "0.0g  Fib", "0.0g  Prot",
                                              "0.0g  Fat", "0.0g  SFat"}));
        EXPECT_EQ(out.rows[4].calories, "0 cal");
    }
}

TEST(FoodLogRows, EachViewShowsItsPairOfNutrients) {
    EXPECT_EQ(viewNutrients(0), std::make_pair(int{kCalories}, int{kCarbohydrate}));
    EXPECT_EQ(viewNutrients(1), std::make_pair(int{kProtein}, int{kFiber}));
    EXPECT_EQ(viewNutrients(2), std::make_pair(int{kFat}, int{kSaturatedFat}));
}

}  // namespace
}  // namespace nutrovex
