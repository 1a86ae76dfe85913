#pragma once

#include <vector>

#include "calc/FoodBudget.h"

namespace nutrovex {

class Session;

// The food budget page of the logbook's current date: the designed sections, then what the
// person's own logbook measures they burn (the "Measured" section).
[[nodiscard]] std::vector<BudgetSection> foodBudgetPageSections(Session& session);
// The compact food budget box of the current date.
[[nodiscard]] FoodBudgetBox foodBudgetBoxOf(Session& session);

}  // namespace nutrovex
