#include "forms/logbook/FoodBudgetForms.h"

#include "calc/TargetProgress.h"
#include "charts/MeasuredMaintenance.h"
#include "core/CalendarDate.h"

namespace nutrovex {

std::vector<BudgetSection> FoodBudgetForm::view() const {
    std::vector<BudgetSection> sections =
        foodBudgetPage(m_days->currentDay(), m_days->store().profile);
    sections.push_back(measuredSection(m_days->store(), m_days->currentDate()));
    const std::vector<std::string> lines =
        dayTargetLines(m_targets, m_days->currentDay(), m_days->store().profile);
    if (!lines.empty()) {
        BudgetSection targets{"Targets", {}};
        for (const std::string& line : lines) {
            targets.rows.push_back({"", line});
        }
        sections.push_back(std::move(targets));
    }
    return sections;
}

std::string FoodBudgetForm::date() const {
    return longDateText(m_days->currentDate());
}

std::string FoodBudgetBoxForm::date() const {
    return longDateText(m_days->currentDate());
}

FoodBudgetBox FoodBudgetBoxForm::view() const {
    return foodBudgetBox(m_days->currentDay(), m_days->store().profile);
}

}  // namespace nutrovex
