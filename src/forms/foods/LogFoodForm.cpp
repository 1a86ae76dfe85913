#include "forms/foods/LogFoodForm.h"

#include <algorithm>

#include "core/CalendarDate.h"
#include "core/Cp1252.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/RecentFoods.h"

namespace nutrovex {

namespace {

// A list selection: the wanted entry when it exists, else the first; -1 for an empty list.
int selectionIn(int wanted, std::size_t count) {
    if (count == 0) {
        return -1;
    }
    return (wanted >= 0 && static_cast<std::size_t>(wanted) < count) ? wanted : 0;
}

}  // namespace

LogFoodForm::LogFoodForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state,
                         int initialGroup, int initialCategory, int initialItem)
    : m_catalogue(&catalogue),
      m_days(&days),
      m_state(&state),
      m_initialCategory(initialCategory),
      m_initialItem(initialItem),
      m_recentFoods(recentFoods(days.store())) {
    m_fields.meal = mealForHour(days.store().clock().now().hour);
    const int group = initialGroup >= 0 ? initialGroup : state.nextLogGroup;
    m_group = group >= 0 && group < kFoodGroupCount ? group : 0;
    fillCategories();
}

LogFoodView LogFoodForm::view() const {
    LogFoodView v;
    v.date = longDateText(m_days->currentDate());
    v.group = m_group;
    v.category = m_category;
    v.item = m_item;
    for (const FoodCategory& c : m_catalogue->groups[static_cast<std::size_t>(m_group)]) {
        v.categoryNames.push_back(c.name.view());
    }
    if (const FoodCategory* c =
            categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category))) {
        for (const FoodItem& f : c->foods) {
            v.foodNames.push_back(f.name.view());
        }
    }
    v.categoryListEnabled = !m_catalogue->groups[static_cast<std::size_t>(m_group)].empty();
    v.valuesEnabled = m_item >= 0;
    v.fields = m_fields;
    for (const FoodItem& f : m_recentFoods) {
        v.recentFoods.push_back(recentFoodText(f));
    }
    return v;
}

Outcome LogFoodForm::edit(FoodField field, std::string_view text) {
    switch (field) {
        case FoodField::Group:
            for (int g = 0; g < kFoodGroupCount; ++g) {
                if (text == kFoodGroupNames[g]) {
                    m_group = g;
                    fillCategories();
                }
            }
            break;
        case FoodField::Category:
            m_initialCategory = findCategory(*m_catalogue, m_group, text);
            fillCategories();
            break;
        case FoodField::Food:
            if (const FoodCategory* c =
                    categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category))) {
                m_initialItem = -1;
                for (std::size_t i = 0; i < c->foods.size(); ++i) {
                    if (text == c->foods[i].name.view()) {
                        m_initialItem = static_cast<int>(i);
                        break;
                    }
                }
            }
            fillFoods();
            break;
        default:
            (void)editValueField(m_fields, m_copy, field, text);
            break;
    }
    return {};
}

void LogFoodForm::select(int group, int category, int item) {
    if (group < 0 || group >= kFoodGroupCount) {
        return;
    }
    m_initialCategory = category;
    m_initialItem = item;
    m_group = group;
    fillCategories();
}

void LogFoodForm::fillCategories() {
    m_category = selectionIn(m_initialCategory,
                             m_catalogue->groups[static_cast<std::size_t>(m_group)].size());
    m_initialCategory = -1;
    fillFoods();
}

void LogFoodForm::fillFoods() {
    const FoodCategory* c = categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category));
    m_item = selectionIn(m_initialItem, c ? c->foods.size() : 0);
    m_initialItem = -1;
    if (m_item < 0) {
        m_copy = FoodItem{};
        m_fields.clearValues();
        m_fields.units.clear();
        m_fields.unitIndex = -1;
        return;
    }
    showSelected();
}

void LogFoodForm::showSelected() {
    const FoodItem* f = foodAt(*m_catalogue, m_group, static_cast<Position>(m_category),
                               static_cast<Position>(m_item));
    if (!f) {
        return;
    }
    m_copy = *f;
    showItem(m_fields, m_copy, loggingUnits(m_copy));
}

Outcome LogFoodForm::command(Command id) {
    switch (id) {
        case Command::Log:
            return log();
        case Command::LogAgain:
            return logAgain();
        case Command::DeleteCategory:
            if (m_category < 0 || !nutrovex::deleteCategory(*m_catalogue, m_group,
                                                            static_cast<Position>(m_category))) {
                return {};
            }
            m_initialCategory = std::min(
                m_category,
                static_cast<int>(m_catalogue->groups[static_cast<std::size_t>(m_group)].size()) -
                    1);
            fillCategories();
            return {.notices = {.catalogue = true, .dataChanged = true}};
        case Command::DeleteFood: {
            if (m_item < 0 ||
                !deleteFoodItem(*m_catalogue, m_group, static_cast<Position>(m_category),
                                static_cast<Position>(m_item))) {
                return {};
            }
            const FoodCategory* c =
                categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category));
            m_initialItem = std::min(m_item, c ? static_cast<int>(c->foods.size()) - 1 : -1);
            fillFoods();
            return {.notices = {.catalogue = true, .dataChanged = true}};
        }
    }
    return {};
}

Outcome LogFoodForm::log() {
    m_result = {};
    if (m_item < 0) {
        return {};  // "Log" is disabled without a food
    }
    if (const FoodField bad = firstInvalidField(m_fields); bad != FoodField::None) {
        m_result.focus = bad;
        return {.message =
                    ScreenMessage{kInvalidNutrientMessage, "Insert Food", MessageKind::Warning}};
    }
    DayRecord* day = m_days->ensureCurrentRecord();
    if (!day) {
        m_result.status = FormResult::Status::ClosedWithoutChange;
        return {};
    }
    UserStore& store = m_days->store();
    FoodItem entry = buildEntry(m_copy, m_fields, true);
    const PackedKey counter = store.header.keyCounter;
    entry.key = store.nextEntryKey();
    entry.loggedFlag = 1;
    if (!dayHasRoomFor(*day, foodSize(entry))) {
        store.header.keyCounter = counter;
        // The screen stays, so the food can go to another day.
        return {.message = dayFullMessage("Insert Food")};
    }
    const Position pos = insertLoggedFood(*day, entry, m_group, m_state->view.sortMode);
    if (pos == kNoPosition) {
        store.header.keyCounter = counter;
        m_result.status = FormResult::Status::ClosedWithoutChange;
        return {};
    }
    m_result.status = FormResult::Status::Done;
    m_result.group = m_group;
    m_result.position = pos;
    m_state->nextLogGroup = m_group;
    return {.notices = {.userData = true, .dataChanged = true}};
}

Outcome LogFoodForm::logAgain() {
    m_result = {};
    if (m_recent < 0 || static_cast<std::size_t>(m_recent) >= m_recentFoods.size()) {
        return {};
    }
    const FoodItem& food = m_recentFoods[static_cast<std::size_t>(m_recent)];
    FoodLogView view = m_state->view;
    view.shownGroup = food.group;
    const auto meal = static_cast<uint16_t>(std::max(m_fields.meal, 0));
    const CopyOutcome outcome = nutrovex::logAgain(*m_days, view, food, meal);
    if (outcome.message) {
        // The food stays chosen, for another day.
        return {.notices = outcome.notices, .message = outcome.message};
    }
    if (outcome.copied == 0) {
        m_result.status = FormResult::Status::ClosedWithoutChange;  // the day could not be made
        return {.notices = outcome.notices};
    }
    m_result.status = FormResult::Status::Done;
    m_result.group = food.group;
    m_result.position = outcome.lastPosition;
    m_state->nextLogGroup = food.group;
    return {.notices = outcome.notices};
}

std::optional<Confirmation> LogFoodForm::confirmation(Command id) const {
    if (id == Command::DeleteCategory) {
        const FoodCategory* c =
            categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category));
        if (!c) {
            return std::nullopt;
        }
        return Confirmation{{"Do you wish to delete the category " + quotedText(c->name.view()) +
                                 " and all of its food items?",
                             "Delete Category", MessageKind::Warning}};
    }
    if (id == Command::DeleteFood) {
        const FoodItem* f = foodAt(*m_catalogue, m_group, static_cast<Position>(m_category),
                                   static_cast<Position>(m_item));
        if (!f) {
            return std::nullopt;
        }
        return Confirmation{
            {"Do you wish to delete the food item " + quotedText(f->name.view()) + "?",
             "Delete Food", MessageKind::Warning},
            true};
    }
    return std::nullopt;
}

CategoryNameForm LogFoodForm::newCategoryForm() const {
    return CategoryNameForm(*m_catalogue, m_group, kNoPosition, false);
}

FoodItemForm LogFoodForm::newFoodItemForm() const {
    return FoodItemForm::newItem(*m_catalogue, m_group, m_category);
}

FindFoodForm LogFoodForm::findForm() const {
    return FindFoodForm(*m_catalogue, m_state->finder);
}

}  // namespace nutrovex
