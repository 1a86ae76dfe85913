#include "foods/DayFoods.h"

#include <algorithm>
#include <bit>
#include <new>
#include <numeric>

#include "core/Names.h"
#include "core/StoredSize.h"

namespace nutrovex {

namespace {

bool validList(int group) {
    return group >= 0 && group <= kAllFoodsGroup;
}

bool sameFloat(float a, float b) {
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

bool sameServing(const ServingQuantity& a, const ServingQuantity& b) {
    return sameFloat(a.amount, b.amount) && a.unit == b.unit && a.sub == b.sub;
}

// The index in other of the twin of food: an identical copy if there is one, else the first
// entry with its key.
std::size_t twinIndex(const FoodList& other, const FoodItem& food) {
    std::size_t byKey = other.size();
    for (std::size_t i = 0; i < other.size(); ++i) {
        if (other[i].key == food.key) {
            if (sameFood(other[i], food)) {
                return i;
            }
            if (byKey == other.size()) {
                byKey = i;
            }
        }
    }
    return byKey;
}

// The list that holds the twins of the entries of list `shown`, given one of its entries.
FoodList* twinList(DayRecord& day, int shown, const FoodItem& food) {
    if (shown != kAllFoodsGroup) {
        return &day.allFoods();
    }
    return food.group < kFoodGroupCount ? &day.group(food.group) : nullptr;
}

}  // namespace

bool sameFood(const FoodItem& a, const FoodItem& b) {
    if (!(a.key == b.key) || a.loggedFlag != b.loggedFlag || !(a.name == b.name) ||
        !(a.text2 == b.text2) || !sameServing(a.serving, b.serving) ||
        !sameServing(a.ref1, b.ref1) || !sameServing(a.ref2, b.ref2) || a.meal != b.meal ||
        !sameFloat(a.ratio, b.ratio) || a.group != b.group) {
        return false;
    }
    for (std::size_t n = 0; n < a.nutrients.size(); ++n) {
        if (!sameFloat(a.nutrients[n], b.nutrients[n])) {
            return false;
        }
    }
    return true;
}

namespace {

// Alphabetical order: by name, then the later insert first; entries read from a file keep their
// meal order among themselves.
bool alphabeticallyBefore(const FoodList& list, std::size_t a, std::size_t b) {
    const int c = compareNames(list[a].name.view(), list[b].name.view());
    if (c != 0) {
        return c < 0;
    }
    if (list[a].insertSerial != list[b].insertSerial) {
        return list[a].insertSerial > list[b].insertSerial;
    }
    return a < b;
}

// The serial of the next entry of a list; when the serials run out they are renumbered in order.
uint16_t nextInsertSerial(FoodList& list) {
    uint16_t highest = 0;
    for (const FoodItem& f : list) {
        highest = std::max(highest, f.insertSerial);
    }
    if (highest < UINT16_MAX) {
        return static_cast<uint16_t>(highest + 1);
    }
    std::vector<std::size_t> numbered;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].insertSerial != 0) {
            numbered.push_back(i);
        }
    }
    std::sort(numbered.begin(), numbered.end(), [&](std::size_t a, std::size_t b) {
        return list[a].insertSerial < list[b].insertSerial;
    });
    uint16_t serial = 0;
    for (const std::size_t i : numbered) {
        list[i].insertSerial = ++serial;
    }
    return static_cast<uint16_t>(serial + 1);
}

}  // namespace

std::vector<Position> presentedOrder(const FoodList& list, uint16_t sortMode) {
    std::vector<Position> order(list.size());
    std::iota(order.begin(), order.end(), Position{0});
    if (sortMode != kSortByMeal) {
        std::sort(order.begin(), order.end(),
                  [&](Position a, Position b) { return alphabeticallyBefore(list, a, b); });
    }
    return order;
}

Position listIndexOf(const FoodList& list, uint16_t sortMode, Position presented) {
    if (presented >= list.size()) {
        return kNoPosition;
    }
    if (sortMode == kSortByMeal) {
        return presented;
    }
    return presentedOrder(list, sortMode)[presented];
}

Position presentedIndexOf(const FoodList& list, uint16_t sortMode, Position index) {
    if (index >= list.size()) {
        return kNoPosition;
    }
    if (sortMode == kSortByMeal) {
        return index;
    }
    // Its rank in alphabetical order.
    std::size_t rank = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i != index && alphabeticallyBefore(list, i, index)) {
            ++rank;
        }
    }
    return static_cast<Position>(rank);
}

std::size_t mealInsertionPoint(const FoodList& list, const FoodItem& food) {
    std::size_t i = 0;
    for (; i < list.size(); ++i) {
        const FoodItem& e = list[i];
        if (e.meal > food.meal ||
            (e.meal == food.meal && compareNames(e.name.view(), food.name.view()) >= 0)) {
            break;
        }
    }
    return i;
}

Position insertOrdered(FoodList& list, FoodItem food, uint16_t sortMode) {
    // kNoPosition itself is never a position.
    if (list.size() >= kNoPosition - 1) {
        return kNoPosition;
    }
    const std::size_t at = mealInsertionPoint(list, food);
    food.insertSerial = nextInsertSerial(list);
    try {
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(at), std::move(food));
    } catch (const std::bad_alloc&) {
        return kNoPosition;
    }
    return presentedIndexOf(list, sortMode, static_cast<Position>(at));
}

Position insertLoggedFood(DayRecord& day, const FoodItem& entry, int targetGroup,
                          uint16_t sortMode) {
    // The day is saved as one record of limited size: a food that would not fit is refused.
    if (entry.group >= kFoodGroupCount || !dayHasRoomFor(day, foodSize(entry))) {
        return kNoPosition;
    }
    FoodList& groupList = day.group(entry.group);
    FoodList& all = day.allFoods();
    FoodList& firstList = targetGroup == kAllFoodsGroup ? groupList : all;
    FoodList& secondList = targetGroup == kAllFoodsGroup ? all : groupList;
    try {
        FoodItem firstCopy = entry;
        FoodItem secondCopy = entry;
        const Position first = insertOrdered(firstList, std::move(firstCopy), kSortByMeal);
        if (first == kNoPosition) {
            return kNoPosition;
        }
        const Position second = insertOrdered(secondList, std::move(secondCopy), sortMode);
        if (second == kNoPosition) {
            firstList.erase(firstList.begin() + first);
        }
        return second;
    } catch (const std::bad_alloc&) {
        return kNoPosition;
    }
}

const FoodItem* presentedFood(const DayRecord& day, int shownGroup, uint16_t sortMode,
                              Position presented) {
    if (!validList(shownGroup)) {
        return nullptr;
    }
    const FoodList& list = day.group(shownGroup);
    const Position index = listIndexOf(list, sortMode, presented);
    return index == kNoPosition ? nullptr : &list[index];
}

bool removeLoggedFood(DayRecord& day, int shownGroup, uint16_t sortMode, Position presented) {
    if (!validList(shownGroup)) {
        return false;
    }
    FoodList& list = day.group(shownGroup);
    const Position index = listIndexOf(list, sortMode, presented);
    if (index == kNoPosition) {
        return false;
    }
    if (FoodList* other = twinList(day, shownGroup, list[index])) {
        const std::size_t twin = twinIndex(*other, list[index]);
        if (twin < other->size()) {
            other->erase(other->begin() + static_cast<std::ptrdiff_t>(twin));
        }
    }
    list.erase(list.begin() + index);
    return true;
}

Position replaceLoggedFood(DayRecord& day, int shownGroup, uint16_t sortMode, Position presented,
                           const FoodItem& edited) {
    if (!validList(shownGroup) || edited.group >= kFoodGroupCount) {
        return kNoPosition;
    }
    FoodList& list = day.group(shownGroup);
    const Position index = listIndexOf(list, sortMode, presented);
    if (index == kNoPosition) {
        return kNoPosition;
    }
    const FoodItem old = list[index];
    (void)removeLoggedFood(day, shownGroup, kSortByMeal, index);
    const Position pos = insertLoggedFood(day, edited, shownGroup, sortMode);
    if (pos == kNoPosition) {
        (void)insertLoggedFood(day, old, shownGroup, sortMode);  // the old entry goes back
    }
    return pos;
}

}  // namespace nutrovex
