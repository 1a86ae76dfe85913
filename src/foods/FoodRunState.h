#pragma once

#include "foods/CatalogueOps.h"
#include "foods/FoodClipboard.h"
#include "foods/FoodFinder.h"
#include "foods/FoodLogRows.h"

namespace nutrovex {

// What the food screens keep for the whole run, shared by every day, group and user: how the day
// lists are shown, the food clipboard, the catalogue's clipboard, the find history and index, the
// meals screen's choice of nutrients, and the group Log Food opens with next.
struct FoodRunState {
    FoodLogView view;
    FoodClipboard clipboard;
    CatalogueClipboard catalogueClipboard;
    FoodFinder finder;
    bool mealsShowFats = false;
    int nextLogGroup = 0;
};

}  // namespace nutrovex
