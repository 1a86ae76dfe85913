#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/CatalogueOps.h"
#include "foods/Confirmation.h"
#include "foods/FoodForms.h"
#include "foods/FoodLogRows.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// The Log Food dialog: three cascading lists (group, category, food), the selected food's
// working copy shown in the value fields, the meal, and the catalogue commands it offers.
class LogFoodForm {
public:
    // The initial group, category and food are selected first (negative: the first entry);
    // each is used once. The meal is preselected by the local hour of the store's clock.
    LogFoodForm(FoodCatalogue& catalogue, DayCursor& days, const FoodLogView& view,
                int initialGroup, int initialCategory, int initialItem);

    [[nodiscard]] int group() const { return m_group; }
    [[nodiscard]] int category() const { return m_category; }  // -1 when the group has none
    [[nodiscard]] int item() const { return m_item; }          // -1 when the category has none
    [[nodiscard]] std::vector<std::string_view> categoryNames() const;
    [[nodiscard]] std::vector<std::string_view> foodNames() const;
    // The category list and its label: only while the group has a category.
    [[nodiscard]] bool categoryListEnabled() const;
    // The food, serving, meal and nutrient controls and "Log": only while a food is selected.
    [[nodiscard]] bool valuesEnabled() const { return m_item >= 0; }

    void selectGroup(int group);
    void selectCategory(int category);
    void selectItem(int item);
    // Selects a food found by the find dialog.
    void selectFood(int group, int category, int item);

    [[nodiscard]] const FoodItem& selectedCopy() const { return m_copy; }
    FoodValueFields fields;

    // The amount field reported a change: the copy's serving follows, the values are shown again.
    void amountChanged(std::optional<double> amount);
    // A unit chosen by list position: the serving is shown again with the values.
    void unitChosen(int index);
    // A value field changed: the value, clamped, goes straight into the copy's nutrient.
    void caloriesEdited(std::optional<uint32_t> calories);
    void gramsEdited(int nutrient, std::optional<double> grams);
    // The calories field lost the focus: more than 10000 becomes 10000, stored too.
    bool caloriesLeft();

    // "Log": validates (message caption "Insert Food"), creates the day when needed and logs the
    // entry. Done gives the logged position in the presented order.
    FormResult log();
    [[nodiscard]] Position loggedPosition() const { return m_loggedPosition; }
    // The group to open with next time.
    [[nodiscard]] int nextInitialGroup() const { return m_group; }
    // Set when a category or food was created or deleted here: the caller hands notices() to the
    // session, which saves the catalogue at its save point.
    [[nodiscard]] bool catalogueChanged() const { return m_catalogueChanged; }
    [[nodiscard]] Notices notices() const {
        return m_catalogueChanged ? kCatalogueChanged : Notices{};
    }

    // After the category dialog made a category in the selected group.
    void categoryCreated(Position category);
    // After the new-item form stored a food.
    void foodCreated(int group, Position category, Position item);
    // The questions before deleting the selected category or food; none when nothing is selected.
    [[nodiscard]] std::optional<Confirmation> confirmDeleteCategory() const;
    void deleteCategory();
    [[nodiscard]] std::optional<Confirmation> confirmDeleteFood() const;
    void deleteFood();

private:
    void fillCategories();
    void fillFoods();
    void showSelected();

    FoodCatalogue* m_catalogue;
    DayCursor* m_days;
    FoodLogView m_view;
    int m_initialCategory;
    int m_initialItem;
    int m_group = 0;
    int m_category = -1;
    int m_item = -1;
    FoodItem m_copy;
    Position m_loggedPosition = kNoPosition;
    bool m_catalogueChanged = false;
};

}  // namespace nutrovex
