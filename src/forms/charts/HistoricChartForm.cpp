#include "forms/charts/HistoricChartForm.h"

#include "charts/WeightTrend.h"
#include "core/UserStore.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

const char* HistoricChartForm::spanButton(uint16_t span) {
    return kHistorySpans[span < kHistorySpanCount ? span : 0].button;
}

HistoricChartView HistoricChartForm::view() const {
    HistoricChartView v;
    v.span = m_settings->span();
    v.history = collectWeightHistory(*m_days, v.span);
    // The chart holds its own copy now.
    releaseChartData(m_days->store());
    v.title = kHistorySpans[v.history.span].title;
    v.trendShown = m_settings->trendShown();
    const UserStore& store = m_days->store();
    if (!v.trendShown || v.history.dayCount == 0 || store.days().empty()) {
        return v;
    }
    // The history ends at the last record; the trend is read over the same days.
    const int32_t lastDay = dayNumber(store.days().back()->date());
    const int32_t firstDay = lastDay - (v.history.dayCount - 1);
    const WeightTrend trend = WeightTrend::ofDays(store.days());
    v.trend = trend.series(firstDay, v.history.dayCount);
    // The rate is the recent one the food budget page gives, whatever the span.
    if (const std::optional<double> rate = trendWindow(trend, lastDay).weeklyRate()) {
        v.rateText = trendWindowLabel() + ' ' + weeklyRateText(*rate, store.profile.metric());
    }
    return v;
}

Outcome HistoricChartForm::command(Command id) {
    if (id == Command::ShowTrend || id == Command::HideTrend) {
        // The choice is written to the program's settings only when it changes.
        if (m_settings->trendShown() != (id == Command::ShowTrend)) {
            m_settings->setTrendShown(id == Command::ShowTrend);
        }
    } else {
        m_settings->setSpan(static_cast<uint16_t>(id));
    }
    return {};
}

}  // namespace nutrovex
