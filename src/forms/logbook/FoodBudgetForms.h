#pragma once

#include <string>
#include <vector>

#include "calc/FoodBudget.h"
#include "core/MacroTargets.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// The food budget page of the logbook's current date: the designed sections, then what the
// person's own logbook measures they burn (the "Measured" section), then the day against the
// person's targets when any is set. Read only.
class FoodBudgetForm {
public:
    explicit FoodBudgetForm(DayCursor& days, const MacroTargets* targets = nullptr)
        : m_days(&days), m_targets(targets) {}

    [[nodiscard]] std::vector<BudgetSection> view() const;
    // The date the page is about, long form.
    [[nodiscard]] std::string date() const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
    const MacroTargets* m_targets;
};

// The compact food budget box of the logbook's current date. Read only.
class FoodBudgetBoxForm {
public:
    explicit FoodBudgetBoxForm(DayCursor& days) : m_days(&days) {}

    [[nodiscard]] FoodBudgetBox view() const;
    // The date the box is about, long form.
    [[nodiscard]] std::string date() const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
