#include "session/FoodBudgetForm.h"

#include "session/Session.h"

namespace nutrovex {

std::vector<BudgetSection> foodBudgetPageSections(Session& session) {
    const DayRecord* day = session.days().currentDay();
    std::vector<BudgetSection> sections = foodBudgetPage(day, session.store().profile);
    // Hook: the measured maintenance section goes here once the engine computes it.
    return sections;
}

FoodBudgetBox foodBudgetBoxOf(Session& session) {
    return foodBudgetBox(session.days().currentDay(), session.store().profile);
}

}  // namespace nutrovex
