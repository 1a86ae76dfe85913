#include "forms/foods/CategoryNameForm.h"

#include "core/Format.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

CategoryNameForm::CategoryNameForm(FoodCatalogue& catalogue, int group, Position category,
                                   bool edit)
    : m_catalogue(&catalogue), m_group(group), m_category(category), m_edit(edit) {
    if (edit) {
        if (const FoodCategory* c = categoryAt(catalogue, group, category)) {
            m_text = c->name.str();
        }
    }
}

const char* CategoryNameForm::caption() const {
    return m_edit ? "Edit Category" : "New Category";
}

CategoryNameView CategoryNameForm::view() const {
    return {caption(), m_text, !m_text.empty()};
}

Outcome CategoryNameForm::edit(FoodField field, std::string_view text) {
    if (field == FoodField::Name) {
        m_text = text;
    }
    return {};
}

Outcome CategoryNameForm::command(Command) {
    m_result = {};
    if (!m_edit && groupIsFull(*m_catalogue, m_group)) {
        m_result.focus = FoodField::Cancel;
        return {.message = ScreenMessage{
                    formatText("You can enter a maximum of %d categories per food group.",
                               static_cast<int>(kMaxCategoriesPerGroup)),
                    caption(), MessageKind::Warning}};
    }
    const std::string_view wanted = stripBlanks(m_text);
    Position pos = kNoPosition;
    if (findCategory(*m_catalogue, m_group, wanted) == kNoPosition) {
        pos = m_edit ? renameCategory(*m_catalogue, m_group, m_category, wanted)
                     : addCategory(*m_catalogue, m_group, wanted);
    }
    if (pos == kNoPosition) {
        m_result.focus = FoodField::Name;
        return {.message =
                    ScreenMessage{kDuplicateCategoryMessage, caption(), MessageKind::Warning}};
    }
    m_result.status = FormResult::Status::Done;
    m_result.group = m_group;
    m_result.position = pos;
    Outcome outcome{.notices = kCatalogueChanged};
    outcome.notices.dataChanged = true;
    return outcome;
}

}  // namespace nutrovex
