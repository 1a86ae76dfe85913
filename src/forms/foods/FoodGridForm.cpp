#include "forms/foods/FoodGridForm.h"

#include "core/CalendarDate.h"

#include <algorithm>

#include "foods/DayCopy.h"

namespace nutrovex {

FoodGridForm::FoodGridForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state,
                           int shownGroup)
    : m_catalogue(&catalogue),
      m_days(&days),
      m_state(&state),
      m_group(std::clamp(shownGroup, 0, static_cast<int>(kAllFoodsGroup))) {
    const FoodLogRows shown = rows();
    const int first = std::max(static_cast<int>(shown.firstFoodRow), 0);
    m_selection = {first, first};
}

FoodLogView FoodGridForm::logView() const {
    FoodLogView v = m_state->view;
    v.shownGroup = m_group;
    return v;
}

FoodLogRows FoodGridForm::rows() const {
    return foodLogRows(m_days->currentDay(), m_group, m_state->view.sortMode);
}

FoodGridView FoodGridForm::view() const {
    FoodGridView v;
    v.title = kFoodGroupNames[m_group];
    v.date = longDateText(m_days->currentDate());
    v.log = logView();
    v.rows = rows();
    v.selection = m_selection;
    v.canCopy = foodRows(false).has_value();
    v.canDelete = foodRows(true).has_value();
    v.canPaste = m_state->clipboard.canPaste();
    return v;
}

void FoodGridForm::select(RowRange rows) {
    m_selection = rows;
}

int FoodGridForm::rowOfFood(const FoodLogRows& rows, Position presented) const {
    if (rows.firstFoodRow == kNoPosition || presented >= rows.foodCount) {
        return -1;
    }
    return rows.firstFoodRow + presented;
}

void FoodGridForm::selectFood(int group, Position presented) {
    if (group != m_group) {
        return;
    }
    if (const int row = rowOfFood(rows(), presented); row >= 0) {
        m_selection = {row, row};
    }
}

std::optional<FoodSelection> FoodGridForm::foodRows(bool whole) const {
    const FoodLogRows shown = rows();
    if (shown.firstFoodRow == kNoPosition || shown.foodCount == 0) {
        return std::nullopt;
    }
    int first = std::min(m_selection.first, m_selection.last) - shown.firstFoodRow;
    int last = std::max(m_selection.first, m_selection.last) - shown.firstFoodRow;
    const int count = shown.foodCount;
    if (whole && (first < 0 || last >= count)) {
        return std::nullopt;
    }
    first = std::max(first, 0);
    last = std::min(last, count - 1);
    if (first > last) {
        return std::nullopt;
    }
    return FoodSelection{static_cast<Position>(first), static_cast<Position>(last - first + 1)};
}

std::optional<Confirmation> FoodGridForm::confirmation(Command id) const {
    if (id != Command::Delete || !foodRows(true)) {
        return std::nullopt;
    }
    return confirmDeleteFoods();
}

Outcome FoodGridForm::copied(CopyOutcome outcome) {
    if (outcome.notices.userData) {
        outcome.notices.dataChanged = true;
    }
    if (const int row = rowOfFood(rows(), outcome.lastPosition); row >= 0) {
        m_selection = {row, row};
    }
    return {.notices = outcome.notices, .message = outcome.message};
}

Outcome FoodGridForm::command(Command id) {
    Notices changed;
    switch (id) {
        case Command::Copy:
            if (const auto rows = foodRows(false)) {
                if (const DayRecord* day = m_days->currentRecord()) {
                    m_state->clipboard.copy(*day, logView(), *rows);
                }
            }
            return {};
        case Command::Cut:
        case Command::Delete: {
            DayRecord* day = m_days->currentRecord();
            const auto rows = foodRows(true);
            if (!rows || !day) {
                return {};
            }
            changed = id == Command::Cut ? m_state->clipboard.cut(*day, logView(), *rows)
                                         : deleteFoodRows(*day, logView(), *rows);
            if (id == Command::Delete) {
                const int first = std::min(m_selection.first, m_selection.last);
                m_selection = {first, first};
            }
            break;
        }
        case Command::Paste: {
            const PasteOutcome outcome = m_state->clipboard.paste(*m_days, logView());
            if (const int row = rowOfFood(this->rows(), outcome.lastPosition); row >= 0) {
                m_selection = {row, row};
            }
            Notices n = outcome.notices;
            if (n.userData) {
                n.dataChanged = true;
            }
            return {.notices = n, .message = outcome.message};
        }
        case Command::SortAlphabetical:
            changed = applyViewCommand(m_state->view, FoodLogCommand::SortAlphabetical);
            break;
        case Command::SortByMeal:
            changed = applyViewCommand(m_state->view, FoodLogCommand::SortByMeal);
            break;
        case Command::SortToggle:
            changed = applyViewCommand(m_state->view, FoodLogCommand::SortToggle);
            break;
        case Command::NutrientToggle:
            changed = applyViewCommand(m_state->view, FoodLogCommand::NutrientToggle);
            break;
        case Command::CopyBreakfast:
        case Command::CopyLunch:
        case Command::CopyDinner:
        case Command::CopySnack: {
            const auto meal = static_cast<uint16_t>(static_cast<int>(id) -
                                                    static_cast<int>(Command::CopyBreakfast));
            return copied(copyMealFromYesterday(*m_days, logView(), meal));
        }
    }
    if (changed.userData) {
        changed.dataChanged = true;
    }
    return {.notices = changed};
}

std::optional<FoodItemForm> FoodGridForm::editForm(int row) const {
    const FoodLogRows shown = rows();
    if (shown.firstFoodRow == kNoPosition || row < shown.firstFoodRow ||
        row >= shown.firstFoodRow + shown.foodCount) {
        return std::nullopt;
    }
    return FoodItemForm::editLoggedEntry(*m_days, logView(),
                                         static_cast<Position>(row - shown.firstFoodRow));
}

LogFoodForm FoodGridForm::logFoodForm() const {
    return LogFoodForm(*m_catalogue, *m_days, *m_state,
                       m_group == kAllFoodsGroup ? m_state->nextLogGroup : m_group);
}

FoodList FoodGridForm::selectedFoods() const {
    const DayRecord* day = m_days->currentRecord();
    const std::optional<FoodSelection> selected = foodRows(false);
    if (day == nullptr || !selected) {
        return {};
    }
    return selectedEntries(*day, logView(), *selected);
}

FoodList FoodGridForm::mealFoods(int meal) const {
    const DayRecord* day = m_days->currentRecord();
    if (day == nullptr || meal < 0 || meal >= kMealCount) {
        return {};
    }
    return mealEntries(*day, m_group, static_cast<uint16_t>(meal));
}

}  // namespace nutrovex
