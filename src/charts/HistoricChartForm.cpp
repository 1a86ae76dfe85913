#include "charts/HistoricChartForm.h"

#include <algorithm>

#include "charts/WeightTrend.h"
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
    const UserStore& store = m_days->store();
    if (!trendShown() || m_history.dayCount == 0 || store.days().empty()) {
        return;
    }
    // The history ends at the last record; the trend is read over the same days.
    const int32_t lastDay = dayNumber(store.days().back()->date());
    const int32_t firstDay = lastDay - (m_history.dayCount - 1);
    const WeightTrend trend = WeightTrend::ofDays(store.days());
    m_trend = trend.series(firstDay, m_history.dayCount);
    const std::optional<int32_t> started = trend.firstDay();
    if (!started) {
        return;
    }
    if (const std::optional<double> rate =
            trend.weeklyRate(std::max(firstDay, *started), lastDay)) {
        m_rateText = weeklyRateText(*rate, store.profile.metric());
    }
}

}  // namespace nutrovex
