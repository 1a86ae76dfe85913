#include "forms/charts/BodyMassChartForm.h"

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

std::optional<ScreenMessage> BodyMassChartForm::openRefusal() const {
    if (bodyMassChart(m_days->currentRecord(), m_days->store().profile)) {
        return std::nullopt;
    }
    return missingChartDataMessage();
}

BodyMassChartView BodyMassChartForm::view() const {
    BodyMassChartView v;
    v.chart = bodyMassChart(m_days->currentRecord(), m_days->store().profile);
    if (v.chart) {
        v.currentSummary = summary(v.chart->current, v.chart->currentBand, v.chart->metric);
        v.goalSummary = summary(v.chart->goal, v.chart->goalBand, v.chart->metric);
    }
    return v;
}

}  // namespace nutrovex
