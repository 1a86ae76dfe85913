#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <utility>

#include "core/FoodItem.h"
#include "foods/Recipes.h"

namespace nutrovex {

// The screens of other areas that the day's food screens (the meals screen, a food list, Log
// Food) open, each built by whoever made them; an empty one leaves its command disabled.
struct FoodOpeners {
    FoodOpeners() = default;
    // Only the catalogue screen, as screens made outside the program are given.
    FoodOpeners(std::function<void(QWidget*)> openCatalogue)  // NOLINT: implicit on purpose
        : catalogue(std::move(openCatalogue)) {}

    std::function<void(QWidget* parent)> catalogue;
    // Copy To on the current day: the list shown (0..8) and copies of its selected foods.
    std::function<void(QWidget* parent, int shownGroup, FoodList selected)> copyTo;
    // The recipe editor on a new recipe, its ingredients made of the entries (none: an empty
    // recipe). Where the recipe's food went, or none when nothing was saved.
    std::function<std::optional<FoodPlace>(QWidget* parent, FoodList entries)> newRecipe;
};

}  // namespace nutrovex
