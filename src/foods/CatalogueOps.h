#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

inline constexpr std::size_t kMaxCategoriesPerGroup = 250;
inline constexpr std::size_t kMaxFoodsPerCategory = 100;
// The category dialog and the food editors take 20 characters; renaming in place takes 21.
inline constexpr std::size_t kNameFieldLimit = 20;
inline constexpr std::size_t kRenameLimit = 21;

// What every successful catalogue operation below changed, for Session::apply.
inline constexpr Notices kCatalogueChanged{.catalogue = true};

// Every operation below keeps the lists in name order (core/Names.h), refuses byte-equal
// duplicates, and on a change gives the catalogue a new revision and renumbers the group chunks so
// the next save succeeds. A group outside 0..7 or a position outside its list is refused.
// No operation marks the catalogue modified: a caller that changed it hands kCatalogueChanged
// (or its form's notices) to the session, which marks it and saves it at the next save point.

[[nodiscard]] Position findCategory(const FoodCatalogue& catalogue, int group,
                                    std::string_view name);
[[nodiscard]] bool groupIsFull(const FoodCatalogue& catalogue, int group);
// The category at (group, pos), or null.
[[nodiscard]] const FoodCategory* categoryAt(const FoodCatalogue& catalogue, int group,
                                             Position pos);
[[nodiscard]] const FoodItem* foodAt(const FoodCatalogue& catalogue, int group, Position category,
                                     Position item);

// A new empty category with a fresh key from the catalogue's counter; its position, or
// kNoPosition for a duplicate or an empty name. The 250 limit belongs to the screens that create
// categories (see groupIsFull).
Position addCategory(FoodCatalogue& catalogue, int group, std::string_view name);
// Moves the category to the place of its new name; refused when any category of the group
// already bears the name (its own included) or the name is empty. The key is kept.
Position renameCategory(FoodCatalogue& catalogue, int group, Position pos, std::string_view name);
// Removes the category and all its foods.
bool deleteCategory(FoodCatalogue& catalogue, int group, Position pos);
void deleteAllCategories(FoodCatalogue& catalogue, int group);

[[nodiscard]] Position findFoodItem(const FoodCategory& category, std::string_view name);
[[nodiscard]] bool categoryIsFull(const FoodCategory& category);
// Adds a copy of item with the group set, a fresh key from the catalogue's counter and the
// logged flag 1. Refused for a duplicate or empty name; the 100 limit is the callers'.
Position addFoodItem(FoodCatalogue& catalogue, int group, Position category, const FoodItem& item);
// Renaming replaces the item by a copy whose two name strings are the new name, with the group
// set, a fresh key and flag 1: a renamed food deliberately gets a new key. Refused when any item
// of the category bears the name, its own included.
Position renameFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item,
                        std::string_view name);
// The edit form's store: like renaming, with the edited values and edited.name as the new name,
// refused only when another item bears that name.
Position replaceFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item,
                         const FoodItem& edited);
bool deleteFoodItem(FoodCatalogue& catalogue, int group, Position category, Position item);

// The catalogue's own clipboard: one category (with its foods) or one food, never both.
class CatalogueClipboard {
public:
    [[nodiscard]] bool holdsCategory() const { return m_category.has_value(); }
    [[nodiscard]] bool holdsFood() const { return m_food.has_value(); }
    [[nodiscard]] const FoodCategory* category() const {
        return m_category ? &*m_category : nullptr;
    }
    [[nodiscard]] const FoodItem* food() const { return m_food ? &*m_food : nullptr; }

    bool copyCategory(const FoodCatalogue& catalogue, int group, Position pos);
    bool cutCategory(FoodCatalogue& catalogue, int group, Position pos);
    bool copyFood(const FoodCatalogue& catalogue, int group, Position category, Position item);
    bool cutFood(FoodCatalogue& catalogue, int group, Position category, Position item);

    // Adds the held category under a name made unique in the group, with a fresh key, its foods
    // moved into the group. Refused when no category is held or the group is full.
    Position pasteCategory(FoodCatalogue& catalogue, int group) const;
    // Adds the held food under a name made unique in the category (add rules), both name strings
    // set to it. Refused when no food is held or the category holds 100 foods.
    Position pasteFood(FoodCatalogue& catalogue, int group, Position category) const;

    void clear();

private:
    std::optional<FoodCategory> m_category;
    std::optional<FoodItem> m_food;
};

}  // namespace nutrovex
