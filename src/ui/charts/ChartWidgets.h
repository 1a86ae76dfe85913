#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "charts/BodyMassBands.h"
#include "charts/WeightHistory.h"

namespace nutrovex {

// The historic chart control: holds its own copy of the history and paints it, at most half as
// high as it is wide.
class HistoricChartWidget : public QWidget {
    Q_OBJECT

public:
    explicit HistoricChartWidget(QWidget* parent = nullptr);

    void setHistory(WeightHistory history, std::vector<std::optional<float>> trend);
    [[nodiscard]] const WeightHistory& history() const { return m_history; }

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return width / 2; }
    [[nodiscard]] QSize sizeHint() const override { return {440, 220}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {240, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    WeightHistory m_history;
    std::vector<std::optional<float>> m_trend;
};

// The chart with body-mass bands: the four bands and the current and goal weights, or nothing
// while the values it needs are missing.
class BodyMassChartWidget : public QWidget {
    Q_OBJECT

public:
    explicit BodyMassChartWidget(QWidget* parent = nullptr);

    void setChart(std::optional<BodyMassChart> chart);
    [[nodiscard]] const std::optional<BodyMassChart>& chart() const { return m_chart; }

    [[nodiscard]] QSize sizeHint() const override { return {440, 360}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 160}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<BodyMassChart> m_chart;
};

}  // namespace nutrovex
