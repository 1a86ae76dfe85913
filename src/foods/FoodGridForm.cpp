#include "foods/FoodGridForm.h"

#include <algorithm>

namespace nutrovex {

FoodGridForm::FoodGridForm(DayCursor& days, FoodRunState& state, int shownGroup)
    : m_days(&days),
      m_state(&state),
      m_group(std::clamp(shownGroup, 0, static_cast<int>(kAllFoodsGroup))) {
    refresh();
}

FoodLogView FoodGridForm::view() const {
    FoodLogView v = m_state->view;
    v.shownGroup = m_group;
    return v;
}

const char* FoodGridForm::title() const {
    return kFoodGroupNames[m_group];
}

void FoodGridForm::refresh() {
    m_rows = foodLogRows(m_days->currentDay(), m_group, m_state->view.sortMode);
}

int FoodGridForm::rowOfFood(Position presented) const {
    if (m_rows.firstFoodRow == kNoPosition || presented >= m_rows.foodCount) {
        return -1;
    }
    return m_rows.firstFoodRow + presented;
}

std::optional<Position> FoodGridForm::foodAtRow(int row) const {
    if (m_rows.firstFoodRow == kNoPosition || row < m_rows.firstFoodRow ||
        row >= m_rows.firstFoodRow + m_rows.foodCount) {
        return std::nullopt;
    }
    return static_cast<Position>(row - m_rows.firstFoodRow);
}

std::optional<FoodSelection> FoodGridForm::foodRows(RowRange selected, bool whole) const {
    if (m_rows.firstFoodRow == kNoPosition || m_rows.foodCount == 0) {
        return std::nullopt;
    }
    int first = std::min(selected.first, selected.last) - m_rows.firstFoodRow;
    int last = std::max(selected.first, selected.last) - m_rows.firstFoodRow;
    const int count = m_rows.foodCount;
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

bool FoodGridForm::canCopy(RowRange selected) const {
    return foodRows(selected, false).has_value();
}

bool FoodGridForm::canDelete(RowRange selected) const {
    return foodRows(selected, true).has_value();
}

Notices FoodGridForm::changed(Notices notices) {
    if (notices.userData) {
        notices.dataChanged = true;
    }
    refresh();
    return notices;
}

void FoodGridForm::copy(RowRange selected) {
    const DayRecord* day = m_days->currentRecord();
    if (const auto rows = foodRows(selected, false); rows && day) {
        m_state->clipboard.copy(*day, view(), *rows);
    }
}

Notices FoodGridForm::cut(RowRange selected) {
    DayRecord* day = m_days->currentRecord();
    const auto rows = foodRows(selected, true);
    if (!rows || !day) {
        return {};
    }
    return changed(m_state->clipboard.cut(*day, view(), *rows));
}

Notices FoodGridForm::deleteRows(RowRange selected) {
    DayRecord* day = m_days->currentRecord();
    const auto rows = foodRows(selected, true);
    if (!rows || !day) {
        return {};
    }
    return changed(deleteFoodRows(*day, view(), *rows));
}

PasteOutcome FoodGridForm::paste() {
    PasteOutcome outcome = m_state->clipboard.paste(*m_days, view());
    outcome.notices = changed(outcome.notices);
    return outcome;
}

Notices FoodGridForm::command(FoodLogCommand command) {
    return changed(applyViewCommand(m_state->view, command));
}

CopyOutcome FoodGridForm::copyMealFromYesterday(uint16_t meal) {
    CopyOutcome outcome = nutrovex::copyMealFromYesterday(*m_days, view(), meal);
    outcome.notices = changed(outcome.notices);
    return outcome;
}

}  // namespace nutrovex
