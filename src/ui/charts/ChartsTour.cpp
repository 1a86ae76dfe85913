#include "ui/charts/ChartsTour.h"

#include <memory>

#include "charts/HistoricChartForm.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/HistoricChartDialog.h"

namespace nutrovex {

namespace {

// "7 Day" -> "7-day"
QString pictureName(uint16_t span) {
    return QString::fromLatin1(HistoricChartForm::spanButton(span))
        .toLower()
        .replace(QLatin1Char(' '), QLatin1Char('-'));
}

// The tour's own choices, so the person's settings are not touched; they live as long as the
// screen.
struct TourSettings {
    MemoryChartSettings settings;
};

class TourHistoricChart : private TourSettings, public HistoricChartDialog {
public:
    TourHistoricChart(SessionNotifier& notifier, QWidget* parent, uint16_t span, bool trend)
        : TourSettings{prepared(span, trend)}, HistoricChartDialog(notifier, parent, settings) {}

private:
    static MemoryChartSettings prepared(uint16_t span, bool trend) {
        MemoryChartSettings s;
        s.setSpan(span);
        s.setTrendShown(trend);
        return s;
    }
};

TourStop historicStop(SessionNotifier& notifier, const QString& name, uint16_t span, bool trend) {
    return {name, [&notifier, span, trend](QWidget* parent) -> std::unique_ptr<QWidget> {
                return std::make_unique<TourHistoricChart>(notifier, parent, span, trend);
            }};
}

}  // namespace

std::vector<TourStop> chartsTourStops(SessionNotifier& notifier) {
    std::vector<TourStop> stops;
    stops.push_back(historicStop(notifier, QStringLiteral("historic-chart"), 1, false));
    for (uint16_t span = 0; span < kHistorySpanCount; ++span) {
        stops.push_back(historicStop(
            notifier, QStringLiteral("historic-chart-") + pictureName(span), span, false));
    }
    stops.push_back(historicStop(notifier, QStringLiteral("historic-chart-trend"), 4, true));
    stops.push_back({QStringLiteral("body-mass-chart"),
                     [&notifier](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<BodyMassChartDialog>(notifier, parent);
                     }});
    return stops;
}

}  // namespace nutrovex
