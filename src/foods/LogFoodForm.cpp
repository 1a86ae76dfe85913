#include "foods/LogFoodForm.h"

#include <algorithm>

#include "core/Cp1252.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"

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

LogFoodForm::LogFoodForm(FoodCatalogue& catalogue, DayCursor& days, const FoodLogView& view,
                         int initialGroup, int initialCategory, int initialItem)
    : m_catalogue(&catalogue),
      m_days(&days),
      m_view(view),
      m_initialCategory(initialCategory),
      m_initialItem(initialItem) {
    fields.meal = mealForHour(days.store().clock().now().hour);
    selectGroup(initialGroup >= 0 && initialGroup < kFoodGroupCount ? initialGroup : 0);
}

std::vector<std::string_view> LogFoodForm::categoryNames() const {
    std::vector<std::string_view> names;
    for (const FoodCategory& c : m_catalogue->groups[static_cast<std::size_t>(m_group)]) {
        names.push_back(c.name.view());
    }
    return names;
}

std::vector<std::string_view> LogFoodForm::foodNames() const {
    std::vector<std::string_view> names;
    if (const FoodCategory* c =
            categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category))) {
        for (const FoodItem& f : c->foods) {
            names.push_back(f.name.view());
        }
    }
    return names;
}

bool LogFoodForm::categoryListEnabled() const {
    return !m_catalogue->groups[static_cast<std::size_t>(m_group)].empty();
}

void LogFoodForm::selectGroup(int group) {
    if (group < 0 || group >= kFoodGroupCount) {
        return;
    }
    m_group = group;
    fillCategories();
}

void LogFoodForm::selectCategory(int category) {
    m_initialCategory = category;
    fillCategories();
}

void LogFoodForm::selectItem(int item) {
    m_initialItem = item;
    fillFoods();
}

void LogFoodForm::selectFood(int group, int category, int item) {
    m_initialCategory = category;
    m_initialItem = item;
    selectGroup(group);
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
        fields.clearValues();
        fields.units.clear();
        fields.unitIndex = -1;
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
    showItem(fields, m_copy, loggingUnits(m_copy));
}

void LogFoodForm::amountChanged(std::optional<double> amount) {
    fields.amount = amount;
    m_copy.serving.amount = static_cast<float>(amount.value_or(0.0));
    m_copy.updateRatio();
    showValues(fields, m_copy);
}

void LogFoodForm::unitChosen(int index) {
    fields.unitIndex = index;
    const auto unit = fields.unit();
    if (!unit) {
        return;
    }
    m_copy.serving.unit = *unit;
    m_copy.updateRatio();
    fields.amount = std::clamp(static_cast<double>(m_copy.serving.amount), 0.0, kMaxServingAmount);
    showValues(fields, m_copy);
}

void LogFoodForm::caloriesEdited(std::optional<uint32_t> calories) {
    caloriesTyped(fields, m_copy, calories);
}

void LogFoodForm::gramsEdited(int nutrient, std::optional<double> grams) {
    gramsTyped(fields, m_copy, nutrient, grams);
}

bool LogFoodForm::caloriesLeft() {
    return caloriesFieldLeft(fields, m_copy);
}

FormResult LogFoodForm::log() {
    FormResult result;
    if (m_item < 0) {
        return result;  // "Log" is disabled without a food
    }
    if (const FoodField bad = firstInvalidField(fields); bad != FoodField::None) {
        result.message =
            ScreenMessage{kInvalidNutrientMessage, "Insert Food", MessageKind::Warning};
        result.focus = bad;
        return result;
    }
    DayRecord* day = m_days->ensureCurrentRecord();
    if (!day) {
        result.status = FormResult::Status::ClosedWithoutChange;
        return result;
    }
    UserStore& store = m_days->store();
    FoodItem entry = buildEntry(m_copy, fields, true);
    const PackedKey counter = store.header.keyCounter;
    entry.key = store.nextEntryKey();
    entry.loggedFlag = 1;
    if (!dayHasRoomFor(*day, foodSize(entry))) {
        store.header.keyCounter = counter;
        result.message = dayFullMessage("Insert Food");
        return result;  // the screen stays, so the food can go to another day
    }
    const Position pos = insertLoggedFood(*day, entry, m_group, m_view.sortMode);
    if (pos == kNoPosition) {
        store.header.keyCounter = counter;
        result.status = FormResult::Status::ClosedWithoutChange;
        return result;
    }
    m_loggedPosition = pos;
    result.notices.userData = true;
    result.notices.dataChanged = true;
    result.status = FormResult::Status::Done;
    result.group = m_group;
    result.position = pos;
    return result;
}

void LogFoodForm::categoryCreated(Position category) {
    m_catalogueChanged = true;
    selectCategory(category);
}

void LogFoodForm::foodCreated(int group, Position category, Position item) {
    m_catalogueChanged = true;
    selectFood(group, category, item);
}

std::optional<Confirmation> LogFoodForm::confirmDeleteCategory() const {
    const FoodCategory* c = categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category));
    if (!c) {
        return std::nullopt;
    }
    return Confirmation{{"Do you wish to delete the category " + quotedText(c->name.view()) +
                             " and all of its food items?",
                         "Delete Category", MessageKind::Warning}};
}

void LogFoodForm::deleteCategory() {
    if (m_category < 0 ||
        !nutrovex::deleteCategory(*m_catalogue, m_group, static_cast<Position>(m_category))) {
        return;
    }
    m_catalogueChanged = true;
    const auto count =
        static_cast<int>(m_catalogue->groups[static_cast<std::size_t>(m_group)].size());
    selectCategory(std::min(m_category, count - 1));
}

std::optional<Confirmation> LogFoodForm::confirmDeleteFood() const {
    const FoodItem* f = foodAt(*m_catalogue, m_group, static_cast<Position>(m_category),
                               static_cast<Position>(m_item));
    if (!f) {
        return std::nullopt;
    }
    return Confirmation{{"Do you wish to delete the food item " + quotedText(f->name.view()) + "?",
                         "Delete Food", MessageKind::Warning},
                        true};
}

void LogFoodForm::deleteFood() {
    if (m_item < 0 || !deleteFoodItem(*m_catalogue, m_group, static_cast<Position>(m_category),
                                      static_cast<Position>(m_item))) {
        return;
    }
    m_catalogueChanged = true;
    const FoodCategory* c = categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category));
    const int count = c ? static_cast<int>(c->foods.size()) : 0;
    selectItem(std::min(m_item, count - 1));
}

}  // namespace nutrovex
