#include "forms/logbook/SummaryTableForm.h"

#include "calc/TargetProgress.h"
#include "logbook/SummaryTable.h"

namespace nutrovex {

SummaryTableView SummaryTableForm::view() const {
    SummaryTableView v;
    v.days = static_cast<int>(m_days->store().days().size());
    v.currentRow =
        m_days->currentRecord() != nullptr ? static_cast<int>(m_days->currentIndex()) : -1;
    v.marksTargets = m_targets != nullptr && m_targets->any();
    if (v.marksTargets) {
        v.targetsLegend = "A dot beside the date: the day met every target.";
    }
    return v;
}

bool SummaryTableForm::withinTargets(int row) const {
    const auto& days = m_days->store().days();
    if (m_targets == nullptr || !m_targets->any() || row < 0 ||
        row >= static_cast<int>(days.size())) {
        return false;
    }
    return dayTargetProgress(*m_targets, *days[static_cast<std::size_t>(row)],
                             m_days->store().profile)
        .dayWithin;
}

std::string SummaryTableForm::cell(int row, int column) const {
    if (column < 0 || column >= kSummaryColumnCount) {
        return {};
    }
    if (row == -1) {
        return kSummaryColumnHeads[static_cast<std::size_t>(column)];
    }
    const auto& days = m_days->store().days();
    if (row < 0 || row >= static_cast<int>(days.size())) {
        return {};
    }
    return summaryCell(*days[static_cast<std::size_t>(row)], column);
}

}  // namespace nutrovex
