#include "forms/foods/FoodItemForm.h"

#include "core/CalendarDate.h"

#include "core/Format.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

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
    form.m_fields.units = allUnits();
    form.m_fields.amount = 1.0;
    (void)form.m_fields.selectUnit(ServingUnit::Cup);
    form.m_fields.calories = 0;
    for (int n = 1; n < kNutrientCount; ++n) {
        form.m_fields.grams[static_cast<std::size_t>(n)] = 0.0;
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
        form.m_name = f->name.str();
        showItem(form.m_fields, *f, allUnits());
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
        form.m_name = f->name.str();
        showItem(form.m_fields, *f, loggingUnits(*f));
        form.m_fields.meal = mealForHour(days.store().clock().now().hour);
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
        form.m_name = f->name.str();
        showItem(form.m_fields, *f, loggingUnits(*f));
        form.m_fields.meal = f->meal < kMealCount ? f->meal : -1;
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

FoodItemView FoodItemForm::view() const {
    FoodItemView v;
    v.caption = caption();
    v.nameReadOnly = m_kind == FoodFormKind::InsertIntoDay;
    if (hasMeal() && m_days != nullptr) {
        v.date = longDateText(m_days->currentDate());
    }
    v.hasMeal = hasMeal();
    v.okEnabled = m_kind == FoodFormKind::InsertIntoDay || !m_name.empty();
    v.name = m_name;
    v.fields = m_fields;
    v.listsShown = m_kind == FoodFormKind::NewItem;
    v.group = m_group;
    v.category = m_category;
    if (v.listsShown && m_group >= 0 && m_group < kFoodGroupCount) {
        for (const FoodCategory& c : m_catalogue->groups[static_cast<std::size_t>(m_group)]) {
            v.categoryNames.push_back(c.name.view());
        }
    }
    return v;
}

Outcome FoodItemForm::edit(FoodField field, std::string_view text) {
    switch (field) {
        case FoodField::Name:
            m_name = text;
            break;
        case FoodField::Group:
            if (m_kind == FoodFormKind::NewItem) {
                for (int g = 0; g < kFoodGroupCount; ++g) {
                    if (text == kFoodGroupNames[g]) {
                        m_group = g;
                        m_category =
                            m_catalogue->groups[static_cast<std::size_t>(g)].empty() ? -1 : 0;
                    }
                }
            }
            break;
        case FoodField::Category:
            if (m_kind == FoodFormKind::NewItem) {
                const Position found = findCategory(*m_catalogue, m_group, text);
                if (found != kNoPosition) {
                    m_category = found;
                }
            }
            break;
        default:
            (void)editValueField(m_fields, m_working, field, text);
            break;
    }
    return {};
}

CategoryNameForm FoodItemForm::newCategoryForm() const {
    return CategoryNameForm(*m_catalogue, m_group, kNoPosition, false);
}

void FoodItemForm::selectCategory(Position category) {
    if (m_kind != FoodFormKind::NewItem) {
        return;
    }
    const std::size_t count = m_catalogue->groups[static_cast<std::size_t>(m_group)].size();
    if (category < count) {
        m_category = category;
    }
}

Outcome FoodItemForm::command(Command) {
    return accept();
}

ScreenMessage FoodItemForm::refusal(const char* text) const {
    return {text, caption(), MessageKind::Warning};
}

Outcome FoodItemForm::accept() {
    m_result = {};
    FormResult& result = m_result;
    Outcome outcome;
    if (!m_valid) {
        result.status = FormResult::Status::ClosedWithoutChange;
        return outcome;
    }
    if (const FoodField bad = firstInvalidField(m_fields); bad != FoodField::None) {
        outcome.message = refusal(kInvalidNutrientMessage);
        result.focus = bad;
        return outcome;
    }
    const FoodCategory* category =
        m_catalogue ? categoryAt(*m_catalogue, m_group, static_cast<Position>(m_category))
                    : nullptr;
    if (m_kind == FoodFormKind::NewItem && category && categoryIsFull(*category)) {
        outcome.message =
            refusal(formatText("You can enter a maximum of %d food items per category.",
                               static_cast<int>(kMaxFoodsPerCategory))
                        .c_str());
        return outcome;
    }
    FoodItem entry = buildEntry(m_working, m_fields, hasMeal());
    switch (m_kind) {
        case FoodFormKind::NewItem:
        case FoodFormKind::EditItem: {
            entry.name = stripBlanks(m_name);
            entry.text2 = entry.name;  // the find searches the second name
            const Position pos =
                m_kind == FoodFormKind::NewItem
                    ? (category ? addFoodItem(*m_catalogue, m_group,
                                              static_cast<Position>(m_category), entry)
                                : kNoPosition)
                    : replaceFoodItem(*m_catalogue, m_group, static_cast<Position>(m_category),
                                      m_item, entry);
            if (pos == kNoPosition) {
                outcome.message = refusal(kDuplicateFoodMessage);
                result.focus = FoodField::Name;
                return outcome;
            }
            result.group = m_group;
            result.category = static_cast<Position>(m_category);
            result.position = pos;
            outcome.notices = kCatalogueChanged;
            break;
        }
        case FoodFormKind::InsertIntoDay: {
            DayRecord* day = m_days->ensureCurrentRecord();
            if (!day) {
                result.status = FormResult::Status::ClosedWithoutChange;
                return outcome;
            }
            if (!dayHasRoomFor(*day, foodSize(entry))) {
                outcome.message = dayFullMessage("Insert Food");
                return outcome;
            }
            UserStore& store = m_days->store();
            const PackedKey counter = store.header.keyCounter;
            entry.key = store.nextEntryKey();
            entry.loggedFlag = 1;
            result.position = insertLoggedFood(*day, entry, entry.group, m_view.sortMode);
            if (result.position == kNoPosition) {
                store.header.keyCounter = counter;
                result.status = FormResult::Status::ClosedWithoutChange;
                return outcome;
            }
            result.group = entry.group;
            outcome.notices.userData = true;
            break;
        }
        case FoodFormKind::EditLoggedEntry: {
            DayRecord* day = m_days->currentRecord();
            entry.name = m_name;
            result.position = day ? replaceLoggedFood(*day, m_group, m_view.sortMode, m_item, entry)
                                  : kNoPosition;
            if (result.position == kNoPosition) {
                result.status = FormResult::Status::ClosedWithoutChange;
                return outcome;
            }
            result.group = m_group;
            outcome.notices.userData = true;
            break;
        }
    }
    outcome.notices.dataChanged = true;
    result.status = FormResult::Status::Done;
    return outcome;
}

}  // namespace nutrovex
