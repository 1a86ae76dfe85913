#include "ui/charts/ChartsTour.h"

#include <memory>

#include "session/Session.h"
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
    TourHistoricChart(Session& session, SessionNotifier& notifier, QWidget* parent, uint16_t span,
                      bool trend)
        : TourSettings{prepared(span, trend)},
          HistoricChartDialog(HistoricChartForm(session.days(), settings), notifier, parent) {}

private:
    static MemoryChartSettings prepared(uint16_t span, bool trend) {
        MemoryChartSettings s;
        s.setSpan(span);
        s.setTrendShown(trend);
        return s;
    }
};

TourStop historicStop(Session& session, SessionNotifier& notifier, const QString& name,
                      uint16_t span, bool trend) {
    return {name, [&session, &notifier, span, trend](QWidget* parent) -> std::unique_ptr<QWidget> {
                return std::make_unique<TourHistoricChart>(session, notifier, parent, span, trend);
            }};
}

}  // namespace

std::vector<TourStop> chartsTourStops(Session& session, SessionNotifier& notifier) {
    std::vector<TourStop> stops;
    stops.push_back(historicStop(session, notifier, QStringLiteral("historic-chart"), 1, false));
    for (uint16_t span = 0; span < kHistorySpanCount; ++span) {
        stops.push_back(historicStop(
            session, notifier, QStringLiteral("historic-chart-") + pictureName(span), span, false));
    }
    stops.push_back(
        historicStop(session, notifier, QStringLiteral("historic-chart-trend"), 4, true));
    stops.push_back({QStringLiteral("body-mass-chart"),
                     [&session, &notifier](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<BodyMassChartDialog>(
                             BodyMassChartForm(session.days()), notifier, parent);
                     }});
    return stops;
}

}  // namespace nutrovex
