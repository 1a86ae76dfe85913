#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/Confirmation.h"
#include "foods/FoodRunState.h"
#include "forms/foods/CategoryNameForm.h"
#include "forms/foods/FindFoodForm.h"
#include "forms/foods/FoodFieldEdit.h"
#include "forms/foods/FoodItemForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

struct LogFoodView {
    std::string date;  // the day a food is logged into, long form
    int group = 0;
    int category = -1;  // -1 when the group has none
    int item = -1;      // -1 when the category has none
    std::vector<std::string_view> categoryNames;
    std::vector<std::string_view> foodNames;
    // The category list and its label: only while the group has a category.
    bool categoryListEnabled = false;
    // The food, serving, meal and nutrient controls and "Log": only while a food is selected.
    bool valuesEnabled = false;
    FoodValueFields fields;
    std::vector<std::string> recentFoods;  // "name, serving", newest first
};

// Log Food: three cascading lists (group, category, food), the selected food's working copy shown
// in the value fields, the meal, the recent foods, and the catalogue commands it offers. What it
// logs or changes is saved by the screens that opened it.
class LogFoodForm {
public:
    // The initial group (negative: the one Log Food opened with last), category and food are
    // selected first (negative: the first entry); each is used once. The meal is preselected by
    // the local hour of the store's clock.
    LogFoodForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state, int initialGroup,
                int initialCategory = -1, int initialItem = -1);

    enum class Command : uint8_t {
        // Validates (message caption "Insert Food"), creates the day when needed and logs the
        // entry; result() then says where it went.
        Log,
        // Logs the chosen recent food again with the meal shown; the day could not be made when
        // nothing was logged and no message says why.
        LogAgain,
        DeleteCategory,  // after confirmation
        DeleteFood,      // after confirmation
    };

    [[nodiscard]] LogFoodView view() const;
    // The lists (Group, Category, Food by their names), the value fields and the meal.
    Outcome edit(FoodField field, std::string_view text);
    // Selects a food found, stored or made by another screen (its category, or the group alone
    // when the catalogue changed under the lists).
    void select(int group, int category, int item);
    // The recent food to log again, by its position in the list.
    void selectRecent(int index) { m_recent = index; }
    [[nodiscard]] std::optional<Confirmation> confirmation(Command id) const;
    Outcome command(Command id);
    // After Log or LogAgain: the list the food went into and its presented position there.
    [[nodiscard]] const FormResult& result() const { return m_result; }
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

    // The screens Log Food opens, on the selected group and category.
    [[nodiscard]] CategoryNameForm newCategoryForm() const;
    [[nodiscard]] FoodItemForm newFoodItemForm() const;
    [[nodiscard]] FindFoodForm findForm() const;

private:
    void fillCategories();
    void fillFoods();
    void showSelected();
    Outcome log();
    Outcome logAgain();

    FoodCatalogue* m_catalogue;
    DayCursor* m_days;
    FoodRunState* m_state;
    int m_initialCategory;
    int m_initialItem;
    int m_group = 0;
    int m_category = -1;
    int m_item = -1;
    FoodItem m_copy;
    FoodValueFields m_fields;
    std::vector<FoodItem> m_recentFoods;
    int m_recent = 0;
    FormResult m_result;
};

}  // namespace nutrovex
