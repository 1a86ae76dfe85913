#include "foods/RecentFoods.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "core/StoredSize.h"
#include "foods/DayFoods.h"

namespace nutrovex {

std::vector<FoodItem> recentFoods(const UserStore& store, std::size_t count) {
    std::vector<FoodItem> recent;
    std::unordered_set<std::string_view> seen;
    std::vector<const FoodItem*> day;
    const DayList& days = store.days();
    for (auto it = days.rbegin(); it != days.rend() && recent.size() < count; ++it) {
        day.clear();
        for (const FoodItem& f : (*it)->allFoods()) {
            day.push_back(&f);
        }
        std::stable_sort(day.begin(), day.end(), [](const FoodItem* a, const FoodItem* b) {
            return a->key.serial() > b->key.serial();
        });
        for (const FoodItem* f : day) {
            if (recent.size() == count) {
                break;
            }
            if (seen.insert(f->name.view()).second) {
                recent.push_back(*f);
            }
        }
    }
    return recent;
}

std::string recentFoodText(const FoodItem& food) {
    std::string text(food.name.view());
    text += ", ";
    text += servingText(food.serving);
    return text;
}

namespace {

// Inserts a copy of food as a newly logged entry; false when the day could not take it.
bool logCopy(DayRecord& day, UserStore& store, const FoodLogView& view, FoodItem food,
             CopyOutcome& outcome) {
    const PackedKey counter = store.header.keyCounter;
    food.key = store.nextEntryKey();
    food.loggedFlag = 1;
    const int target = view.shownGroup == kAllFoodsGroup ? kAllFoodsGroup : food.group;
    const Position p = insertLoggedFood(day, food, target, view.sortMode);
    if (p == kNoPosition) {
        store.header.keyCounter = counter;  // nothing logged, no key spent
        if (!dayHasRoomFor(day, foodSize(food))) {
            outcome.message = dayFullMessage("Insert Food");
        }
        return false;
    }
    ++outcome.copied;
    if (view.shownGroup == kAllFoodsGroup || view.shownGroup == food.group) {
        outcome.lastPosition = p;
    }
    return true;
}

DayRecord* currentDayCreated(DayCursor& days, Notices& notices) {
    if (!days.ensureCurrentDay()) {
        notices.dayCreated = days.currentRecord() != nullptr;
    }
    return days.currentRecord();
}

}  // namespace

CopyOutcome logAgain(DayCursor& days, const FoodLogView& view, const FoodItem& food,
                     uint16_t meal) {
    CopyOutcome outcome;
    DayRecord* day = currentDayCreated(days, outcome.notices);
    if (!day || food.group >= kFoodGroupCount) {
        return outcome;
    }
    FoodItem entry = food;
    entry.meal = meal;
    if (logCopy(*day, days.store(), view, entry, outcome)) {
        outcome.notices.userData = outcome.notices.dataChanged = true;
    }
    return outcome;
}

CopyOutcome copyMealFromYesterday(DayCursor& days, const FoodLogView& view, uint16_t meal) {
    CopyOutcome outcome;
    const CalendarDate yesterday = steppedDate(days.currentDate(), -1);
    const DayRecord* source = days.store().dayOf(yesterday);
    if (!source) {
        return outcome;
    }
    FoodList foods;
    for (const FoodItem& f : source->group(view.shownGroup)) {
        if (f.meal == meal) {
            foods.push_back(f);
        }
    }
    if (foods.empty()) {
        return outcome;
    }
    DayRecord* day = currentDayCreated(days, outcome.notices);
    if (!day) {
        return outcome;
    }
    for (const FoodItem& f : foods) {
        (void)logCopy(*day, days.store(), view, f, outcome);
    }
    if (outcome.copied > 0) {
        outcome.notices.userData = outcome.notices.dataChanged = true;
    }
    return outcome;
}

}  // namespace nutrovex
