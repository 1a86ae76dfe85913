#include "foods/FoodForms.h"

#include <algorithm>
#include <cstdio>

#include "core/Format.h"
#include "core/ServingUnits.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

namespace {

// Gram fields in the order a refusal looks at them.
constexpr std::pair<int, FoodField> kGramFocusOrder[] = {{kProtein, FoodField::Protein},
                                                         {kFat, FoodField::Fat},
                                                         {kCarbohydrate, FoodField::Carbohydrate},
                                                         {kFiber, FoodField::Fiber},
                                                         {kSaturatedFat, FoodField::SaturatedFat}};

double clampField(double value, double top) {
    if (!(value >= 0.0)) {
        return 0.0;
    }
    return value > top ? top : value;
}

}  // namespace

std::optional<ServingUnit> FoodValueFields::unit() const {
    if (unitIndex < 0 || static_cast<std::size_t>(unitIndex) >= units.size()) {
        return std::nullopt;
    }
    return units[static_cast<std::size_t>(unitIndex)];
}

bool FoodValueFields::selectUnit(ServingUnit unit) {
    const auto it = std::find(units.begin(), units.end(), unit);
    unitIndex = it == units.end() ? -1 : static_cast<int>(it - units.begin());
    return unitIndex >= 0;
}

void FoodValueFields::clearValues() {
    amount.reset();
    calories.reset();
    for (auto& g : grams) {
        g.reset();
    }
}

std::vector<ServingUnit> allUnits() {
    return {kServingUnits.begin(), kServingUnits.end()};
}

std::vector<ServingUnit> loggingUnits(const FoodItem& item) {
    std::vector<ServingUnit> units;
    for (const ServingUnit u : kServingUnits) {
        const ServingQuantity& ref = item.referenceFor(u);
        const bool fromReference =
            ref.amount != 0.0f && isKnownUnit(ref.unit) && unitsCompatible(ref.unit, u);
        if (fromReference || u == item.serving.unit) {
            units.push_back(u);
        }
    }
    // Only a food without any reference serving (or with nothing usable) may be measured in
    // anything; an "item" reference allows just the item.
    const auto usable = [](const ServingQuantity& ref) {
        return ref.amount != 0.0f && isKnownUnit(ref.unit);
    };
    if (units.empty() || (!usable(item.ref1) && !usable(item.ref2))) {
        return allUnits();
    }
    return units;
}

void showItem(FoodValueFields& fields, const FoodItem& item, std::vector<ServingUnit> units) {
    fields.units = std::move(units);
    fields.amount = clampField(item.serving.amount, kMaxServingAmount);
    (void)fields.selectUnit(item.serving.unit);
    showValues(fields, item);
}

void showValues(FoodValueFields& fields, const FoodItem& item) {
    const int calories = shownCalories(item.shownNutrient(kCalories));
    fields.calories = static_cast<uint32_t>(std::max(calories, 0));
    for (int n = 1; n < kNutrientCount; ++n) {
        fields.grams[static_cast<std::size_t>(n)] =
            clampField(item.shownNutrient(n), kMaxGramField);
    }
}

bool capCaloriesField(FoodValueFields& fields) {
    if (fields.calories && *fields.calories > kMaxCaloriesField) {
        fields.calories = kMaxCaloriesField;
        return true;
    }
    return false;
}

void caloriesTyped(FoodValueFields& fields, FoodItem& working, std::optional<uint32_t> calories) {
    fields.calories = calories;
    if (calories) {
        working.setNutrient(kCalories, static_cast<float>(*calories));
    }
}

void gramsTyped(FoodValueFields& fields, FoodItem& working, int nutrient,
                std::optional<double> grams) {
    if (nutrient <= kCalories || nutrient >= kNutrientCount) {
        return;
    }
    fields.grams[static_cast<std::size_t>(nutrient)] = grams;
    if (grams) {
        working.setNutrient(nutrient, static_cast<float>(*grams));
    }
}

bool caloriesFieldLeft(FoodValueFields& fields, FoodItem& working) {
    if (!capCaloriesField(fields)) {
        return false;
    }
    working.setNutrient(kCalories, static_cast<float>(*fields.calories));
    return true;
}

FoodField firstInvalidField(const FoodValueFields& fields) {
    // The amount is stored in single precision: 0.005 must pass as the float it becomes.
    if (!fields.amount ||
        !(static_cast<float>(*fields.amount) >= static_cast<float>(kMinServingAmount))) {
        return FoodField::Amount;
    }
    if (!fields.unit()) {
        return FoodField::Unit;
    }
    if (!fields.calories) {
        return FoodField::Calories;
    }
    for (const auto& [nutrient, field] : kGramFocusOrder) {
        if (!fields.grams[static_cast<std::size_t>(nutrient)]) {
            return field;
        }
    }
    return FoodField::None;
}

bool setNutrientReportingClamp(FoodItem& item, int nutrient, float value) {
    item.setNutrient(nutrient, value);
    return value > item.nutrients[static_cast<std::size_t>(nutrient)];
}

FoodItem buildEntry(const FoodItem& working, const FoodValueFields& fields, bool withMeal) {
    FoodItem entry = working;
    const ServingQuantity serving{static_cast<float>(fields.amount.value_or(0.0)),
                                  fields.unit().value_or(ServingUnit::Pinch), working.serving.sub};
    entry.serving = serving;
    entry.setReference(serving);  // the serving is its own reference: ratio 1
    (void)setNutrientReportingClamp(entry, kCalories,
                                    static_cast<float>(fields.calories.value_or(0)));
    for (int n = 1; n < kNutrientCount; ++n) {
        (void)setNutrientReportingClamp(
            entry, n, static_cast<float>(fields.grams[static_cast<std::size_t>(n)].value_or(0.0)));
    }
    if (withMeal) {
        entry.meal = static_cast<uint16_t>(fields.meal);
    }
    return entry;
}

uint16_t mealForHour(int hour) {
    if (hour >= 5 && hour <= 9) {
        return 0;
    }
    if (hour >= 11 && hour <= 13) {
        return 1;
    }
    if (hour >= 16 && hour <= 19) {
        return 2;
    }
    return 3;
}

// ---- the four food dialogs ----

FoodItemForm FoodItemForm::newItem(FoodCatalogue& catalogue, int group, int category) {
    FoodItemForm form(FoodFormKind::NewItem);
    form.m_catalogue = &catalogue;
    form.m_working.serving = {1.0f, ServingUnit::Cup, 0};
    form.m_working.updateRatio();
    form.m_valid = group >= 0 && group < kFoodGroupCount;
    form.m_group = form.m_valid ? group : 0;
    const std::size_t count = catalogue.groups[static_cast<std::size_t>(form.m_group)].size();
    form.m_category = (category >= 0 && static_cast<std::size_t>(category) < count) ? category
                      : count > 0                                                   ? 0
                                                                                    : -1;
    form.fields.units = allUnits();
    form.fields.amount = 1.0;
    (void)form.fields.selectUnit(ServingUnit::Cup);
    form.fields.calories = 0;
    for (int n = 1; n < kNutrientCount; ++n) {
        form.fields.grams[static_cast<std::size_t>(n)] = 0.0;
    }
    return form;
}

FoodItemForm FoodItemForm::editItem(FoodCatalogue& catalogue, int group, Position category,
                                    Position item) {
    FoodItemForm form(FoodFormKind::EditItem);
    form.m_catalogue = &catalogue;
    form.m_group = group;
    form.m_category = category;
    form.m_item = item;
    if (const FoodItem* f = foodAt(catalogue, group, category, item)) {
        form.m_valid = true;
        form.m_working = *f;
        form.name = f->name.str();
        showItem(form.fields, *f, allUnits());
    }
    return form;
}

FoodItemForm FoodItemForm::insertIntoDay(const FoodCatalogue& catalogue, int group,
                                         Position category, Position item, DayCursor& days,
                                         const FoodLogView& view) {
    FoodItemForm form(FoodFormKind::InsertIntoDay);
    form.m_days = &days;
    form.m_view = view;
    form.m_group = group;
    form.m_category = category;
    form.m_item = item;
    if (const FoodItem* f = foodAt(catalogue, group, category, item)) {
        form.m_valid = true;
        form.m_working = *f;
        form.name = f->name.str();
        showItem(form.fields, *f, loggingUnits(*f));
        form.fields.meal = mealForHour(days.store().clock().now().hour);
    }
    return form;
}

FoodItemForm FoodItemForm::editLoggedEntry(DayCursor& days, const FoodLogView& view,
                                           Position presented) {
    FoodItemForm form(FoodFormKind::EditLoggedEntry);
    form.m_days = &days;
    form.m_view = view;
    form.m_group = view.shownGroup;
    form.m_item = presented;
    const DayRecord* day = days.currentRecord();
    if (const FoodItem* f =
            day ? presentedFood(*day, view.shownGroup, view.sortMode, presented) : nullptr) {
        form.m_valid = true;
        form.m_working = *f;
        form.name = f->name.str();
        showItem(form.fields, *f, loggingUnits(*f));
        form.fields.meal = f->meal < kMealCount ? f->meal : -1;
    }
    return form;
}

const char* FoodItemForm::caption() const {
    switch (m_kind) {
        case FoodFormKind::NewItem:
            return "New Food Item";
        case FoodFormKind::EditItem:
            return "Edit Food Item";
        case FoodFormKind::InsertIntoDay:
            return "Insert Food";
        case FoodFormKind::EditLoggedEntry:
            break;
    }
    return "";
}

bool FoodItemForm::hasMeal() const {
    return m_kind == FoodFormKind::InsertIntoDay || m_kind == FoodFormKind::EditLoggedEntry;
}

bool FoodItemForm::okEnabled() const {
    return m_kind == FoodFormKind::InsertIntoDay || !name.empty();
}

std::vector<std::string_view> FoodItemForm::categoryNames() const {
    std::vector<std::string_view> names;
    if (m_catalogue && m_group >= 0 && m_group < kFoodGroupCount) {
        for (const FoodCategory& c : m_catalogue->groups[static_cast<std::size_t>(m_group)]) {
            names.push_back(c.name.view());
        }
    }
    return names;
}

void FoodItemForm::selectGroup(int group) {
    if (m_kind != FoodFormKind::NewItem || group < 0 || group >= kFoodGroupCount) {
        return;
    }
    m_group = group;
    m_category = m_catalogue->groups[static_cast<std::size_t>(group)].empty() ? -1 : 0;
}

void FoodItemForm::selectCategory(int category) {
    if (m_kind != FoodFormKind::NewItem) {
        return;
    }
    const std::size_t count = m_catalogue->groups[static_cast<std::size_t>(m_group)].size();
    if (category >= 0 && static_cast<std::size_t>(category) < count) {
        m_category = category;
    }
}

void FoodItemForm::refreshAfterServingChange() {
    m_working.updateRatio();
    showValues(fields, m_working);
}

void FoodItemForm::amountChanged(std::optional<double> amount) {
    fields.amount = amount;
    m_working.serving.amount = static_cast<float>(amount.value_or(0.0));
    refreshAfterServingChange();
}

void FoodItemForm::unitChosen(int index) {
    fields.unitIndex = index;
    if (const auto unit = fields.unit()) {
        m_working.serving.unit = *unit;
        refreshAfterServingChange();
    }
}

void FoodItemForm::caloriesEdited(std::optional<uint32_t> calories) {
    caloriesTyped(fields, m_working, calories);
}

void FoodItemForm::gramsEdited(int nutrient, std::optional<double> grams) {
    gramsTyped(fields, m_working, nutrient, grams);
}

bool FoodItemForm::caloriesLeft() {
    return caloriesFieldLeft(fields, m_working);
}

ScreenMessage FoodItemForm::refusal(const char* text) const {
    return {text, caption(), MessageKind::Warning};
}

FormResult FoodItemForm::accept() {
    FormResult result;
    if (!m_valid) {
        result.status = FormResult::Status::ClosedWithoutChange;
        return result;
    }
    if (const FoodField bad = firstInvalidField(fields); bad != FoodField::None) {
        result.message = refusal(kInvalidNutrientMessage);
        result.focus = bad;
        return result;
    }
    const FoodCategory* category =
        m_catalogue ? categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category))
                    : nullptr;
    if (m_kind == FoodFormKind::NewItem && category && categoryIsFull(*category)) {
        result.message =
            refusal(formatText("You can enter a maximum of %d food items per category.",
                               static_cast<int>(kMaxFoodsPerCategory))
                        .c_str());
        return result;
    }
    FoodItem entry = buildEntry(m_working, fields, hasMeal());
    switch (m_kind) {
        case FoodFormKind::NewItem:
        case FoodFormKind::EditItem: {
            entry.name = stripBlanks(name);
            entry.text2 = entry.name;  // the find searches the second name
            const Position pos =
                m_kind == FoodFormKind::NewItem
                    ? (category ? addFoodItem(*m_catalogue, m_group,
                                              static_cast<Position>(m_category), entry)
                                : kNoPosition)
                    : replaceFoodItem(*m_catalogue, m_group, static_cast<Position>(m_category),
                                      m_item, entry);
            if (pos == kNoPosition) {
                result.message = refusal(kDuplicateFoodMessage);
                result.focus = FoodField::Name;
                return result;
            }
            result.group = m_group;
            result.category = static_cast<Position>(m_category);
            result.position = pos;
            result.notices = kCatalogueChanged;
            break;
        }
        case FoodFormKind::InsertIntoDay: {
            DayRecord* day = m_days->ensureCurrentRecord();
            if (!day) {
                result.status = FormResult::Status::ClosedWithoutChange;
                return result;
            }
            if (!dayHasRoomFor(*day, foodSize(entry))) {
                result.message = dayFullMessage("Insert Food");
                return result;
            }
            UserStore& store = m_days->store();
            const PackedKey counter = store.header.keyCounter;
            entry.key = store.nextEntryKey();
            entry.loggedFlag = 1;
            result.position = insertLoggedFood(*day, entry, entry.group, m_view.sortMode);
            if (result.position == kNoPosition) {
                store.header.keyCounter = counter;
                result.status = FormResult::Status::ClosedWithoutChange;
                return result;
            }
            result.group = entry.group;
            result.notices.userData = true;
            break;
        }
        case FoodFormKind::EditLoggedEntry: {
            DayRecord* day = m_days->currentRecord();
            entry.name = name;
            result.position = day ? replaceLoggedFood(*day, m_group, m_view.sortMode, m_item, entry)
                                  : kNoPosition;
            if (result.position == kNoPosition) {
                result.status = FormResult::Status::ClosedWithoutChange;
                return result;
            }
            result.group = m_group;
            result.notices.userData = true;
            break;
        }
    }
    result.notices.dataChanged = true;
    result.status = FormResult::Status::Done;
    return result;
}

// ---- the category name dialog ----

CategoryNameForm::CategoryNameForm(FoodCatalogue& catalogue, int group, Position category,
                                   bool edit)
    : m_catalogue(&catalogue), m_group(group), m_category(category), m_edit(edit) {
    if (edit) {
        if (const FoodCategory* c = categoryAt(catalogue, group, category)) {
            text = c->name.str();
        }
    }
}

const char* CategoryNameForm::caption() const {
    return m_edit ? "Edit Category" : "New Category";
}

FormResult CategoryNameForm::accept() {
    FormResult result;
    if (!m_edit && groupIsFull(*m_catalogue, m_group)) {
        result.message =
            ScreenMessage{formatText("You can enter a maximum of %d categories per food group.",
                                     static_cast<int>(kMaxCategoriesPerGroup)),
                          caption(), MessageKind::Warning};
        result.focus = FoodField::Cancel;
        return result;
    }
    const std::string_view wanted = stripBlanks(text);
    Position pos = kNoPosition;
    if (findCategory(*m_catalogue, m_group, wanted) == kNoPosition) {
        pos = m_edit ? renameCategory(*m_catalogue, m_group, m_category, wanted)
                     : addCategory(*m_catalogue, m_group, wanted);
    }
    if (pos == kNoPosition) {
        result.message = ScreenMessage{kDuplicateCategoryMessage, caption(), MessageKind::Warning};
        result.focus = FoodField::Name;
        return result;
    }
    result.status = FormResult::Status::Done;
    result.group = m_group;
    result.position = pos;
    result.notices = kCatalogueChanged;
    result.notices.dataChanged = true;
    return result;
}

}  // namespace nutrovex
