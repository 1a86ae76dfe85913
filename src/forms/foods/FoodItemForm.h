#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/FoodLogRows.h"
#include "forms/foods/CategoryNameForm.h"
#include "forms/foods/FoodFieldEdit.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

enum class FoodFormKind : uint8_t { NewItem, EditItem, InsertIntoDay, EditLoggedEntry };

struct FoodItemView {
    std::string caption;  // "New Food Item", "Edit Food Item", "Insert Food", or none
    std::string date;     // the day a food is logged into or edited in, long form; else empty
    bool nameReadOnly = false;
    bool hasMeal = false;
    bool okEnabled = false;
    std::string name;
    FoodValueFields fields;
    // The new item's group and category lists.
    bool listsShown = false;
    int group = -1;
    int category = -1;
    std::vector<std::string_view> categoryNames;
};

// The four dialogs that share the food fields: a new catalogue food, an edited catalogue food,
// a catalogue food logged into the current day, and an edited logged food. Whoever opened one
// saves what it stored.
class FoodItemForm {
public:
    // A new food starts as 1 cup, 0 calories, 0 g of everything.
    static FoodItemForm newItem(FoodCatalogue& catalogue, int group, int category);
    static FoodItemForm editItem(FoodCatalogue& catalogue, int group, Position category,
                                 Position item);
    static FoodItemForm insertIntoDay(const FoodCatalogue& catalogue, int group, Position category,
                                      Position item, DayCursor& days, const FoodLogView& view);
    static FoodItemForm editLoggedEntry(DayCursor& days, const FoodLogView& view,
                                        Position presented);

    enum class Command : uint8_t { Ok };

    [[nodiscard]] FoodFormKind kind() const { return m_kind; }
    [[nodiscard]] FoodItemView view() const;
    // The name, the value fields, and the new item's group and category (by their names); a new
    // group selects its first category (or none when it has none).
    Outcome edit(FoodField field, std::string_view text);
    // "New..." beside the new item's categories, and the category it made, selected.
    [[nodiscard]] CategoryNameForm newCategoryForm() const;
    void selectCategory(Position category);
    // OK: validates and stores. A refusal is the outcome's message and leaves the form open, the
    // focus on result().focus.
    Outcome command(Command id);
    [[nodiscard]] const FormResult& result() const { return m_result; }
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    explicit FoodItemForm(FoodFormKind kind) : m_kind(kind) {}
    [[nodiscard]] ScreenMessage refusal(const char* text) const;
    [[nodiscard]] const char* caption() const;
    [[nodiscard]] bool hasMeal() const;
    Outcome accept();

    FoodFormKind m_kind;
    bool m_valid = false;  // false when opened on something that does not exist
    std::string m_name;
    FoodValueFields m_fields;
    FoodItem m_working;
    FoodCatalogue* m_catalogue = nullptr;
    DayCursor* m_days = nullptr;
    FoodLogView m_view;
    int m_group = -1;
    int m_category = -1;
    Position m_item = kNoPosition;  // the edited item, or the presented position of the entry
    FormResult m_result;
};

}  // namespace nutrovex
