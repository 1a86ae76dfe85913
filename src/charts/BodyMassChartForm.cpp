#include "charts/BodyMassChartForm.h"

#include "core/UserStore.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

namespace {

const char* const kBandNames[] = {"Under", "Normal", "Over", "Obese"};

std::string summary(int16_t weight, BodyMassBand band, bool metric) {
    return std::to_string(weight) + (metric ? " kg (" : " lbs (") +
           kBandNames[static_cast<int>(band)] + ")";
}

}  // namespace

BodyMassChartForm::BodyMassChartForm(DayCursor& days) : m_days(&days) {
    refresh();
}

std::optional<ScreenMessage> BodyMassChartForm::openRefusal(DayCursor& days) {
    if (bodyMassChart(days.currentRecord(), days.store().profile)) {
        return std::nullopt;
    }
    return missingChartDataMessage();
}

void BodyMassChartForm::refresh() {
    m_chart = bodyMassChart(m_days->currentRecord(), m_days->store().profile);
}

std::string BodyMassChartForm::currentSummary() const {
    return m_chart ? summary(m_chart->current, m_chart->currentBand, m_chart->metric) : "";
}

std::string BodyMassChartForm::goalSummary() const {
    return m_chart ? summary(m_chart->goal, m_chart->goalBand, m_chart->metric) : "";
}

}  // namespace nutrovex
