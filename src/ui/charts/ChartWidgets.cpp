#include "ui/charts/ChartWidgets.h"

#include <QPainter>

#include "charts/ChartLayout.h"
#include "render/ChartPainter.h"

namespace nutrovex {

HistoricChartWidget::HistoricChartWidget(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void HistoricChartWidget::setHistory(WeightHistory history,
                                     std::vector<std::optional<float>> trend) {
    m_history = std::move(history);
    m_trend = std::move(trend);
    update();
}

void HistoricChartWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ChartColours colours = chartColours(palette());
    painter.fillRect(rect(), palette().color(QPalette::Window));
    const HistoricChartLayout layout =
        historicChartLayout(m_history, size(), font(), m_trend.empty() ? nullptr : &m_trend);
    paintHistoricChart(painter, layout, colours, font());
}

BodyMassChartWidget::BodyMassChartWidget(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void BodyMassChartWidget::setChart(std::optional<BodyMassChart> chart) {
    m_chart = chart;
    update();
}

void BodyMassChartWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ChartColours colours = chartColours(palette());
    painter.fillRect(rect(), colours.face);
    if (m_chart) {
        paintBodyMassChart(painter, layoutBodyMassChart(*m_chart, width(), height()), colours,
                           font());
        return;
    }
    // The values went missing while the chart was open.
    painter.setPen(colours.ink);
    painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap,
                     QString::fromLatin1(missingChartDataMessage().text));
}

}  // namespace nutrovex
