#include "session/FoodBudgetForm.h"

#include "charts/MeasuredMaintenance.h"
#include "session/Session.h"

namespace nutrovex {

std::vector<BudgetSection> foodBudgetPageSections(Session& session) {
    const DayRecord* day = session.days().currentDay();
    std::vector<BudgetSection> sections = foodBudgetPage(day, session.store().profile);
    sections.push_back(measuredSection(session.store(), session.days().currentDate()));
    return sections;
}

FoodBudgetBox foodBudgetBoxOf(Session& session) {
    return foodBudgetBox(session.days().currentDay(), session.store().profile);
}

}  // namespace nutrovex
