#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/FoodCatalogue.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "forms/foods/FoodFieldEdit.h"

namespace nutrovex {

struct CategoryNameView {
    std::string caption;  // "Edit Category" or "New Category"
    std::string text;     // the current name when editing
    bool okEnabled = false;
};

// The category name dialog: a new category in a group, or a new name for one. Whoever opened it
// saves the catalogue.
class CategoryNameForm {
public:
    static constexpr std::size_t kTextLimit = 20;

    CategoryNameForm(FoodCatalogue& catalogue, int group, Position category, bool edit);

    enum class Command : uint8_t { Ok };

    [[nodiscard]] CategoryNameView view() const;
    // The name (FoodField::Name).
    Outcome edit(FoodField field, std::string_view text);
    // OK: a full group refuses a new category (focus on Cancel); an existing or empty name is
    // refused (focus on the field, its text selected). Done gives the category's position.
    Outcome command(Command id);
    [[nodiscard]] const FormResult& result() const { return m_result; }
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    [[nodiscard]] const char* caption() const;

    FoodCatalogue* m_catalogue;
    int m_group;
    Position m_category;
    bool m_edit;
    std::string m_text;
    FormResult m_result;
};

}  // namespace nutrovex
