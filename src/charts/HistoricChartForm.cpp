#include "charts/HistoricChartForm.h"

#include "core/UserStore.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

HistoricChartForm::HistoricChartForm(DayCursor& days, ChartSettings& settings)
    : m_days(&days), m_settings(&settings) {
    refresh();
}

const char* HistoricChartForm::spanButton(uint16_t span) {
    return kHistorySpans[span < kHistorySpanCount ? span : 0].button;
}

std::string HistoricChartForm::title() const {
    return kHistorySpans[m_history.span].title;
}

void HistoricChartForm::selectSpan(uint16_t span) {
    m_settings->setSpan(span);
    refresh();
}

void HistoricChartForm::refresh() {
    m_history = collectWeightHistory(*m_days, m_settings->span());
    // The chart holds its own copy now.
    releaseChartData(m_days->store());
    collectTrend();
}

void HistoricChartForm::setTrendShown(bool shown) {
    m_settings->setTrendShown(shown);
    collectTrend();
}

void HistoricChartForm::collectTrend() {
    m_trend.clear();
    m_rateText.clear();
}

}  // namespace nutrovex
