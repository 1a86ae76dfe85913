#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/WeightHistory.h"

namespace nutrovex {

class DayCursor;

// The chart choices a person makes: the span lasts for the run of the program, the trend line
// is kept in the program's settings.
class ChartSettings {
public:
    virtual ~ChartSettings() = default;
    [[nodiscard]] uint16_t span() const { return m_span; }
    void setSpan(uint16_t span) { m_span = span < kHistorySpanCount ? span : 0; }
    [[nodiscard]] virtual bool trendShown() const = 0;
    virtual void setTrendShown(bool shown) = 0;

private:
    uint16_t m_span = 0;
};

// Settings that live as long as the object: for the tool and for tests.
class MemoryChartSettings final : public ChartSettings {
public:
    [[nodiscard]] bool trendShown() const override { return m_trend; }
    void setTrendShown(bool shown) override { m_trend = shown; }

private:
    bool m_trend = false;
};

// The historic weight chart screen: the span buttons, the history of the chosen span, and the
// trend line with its weekly rate when the person asks for it.
class HistoricChartForm {
public:
    HistoricChartForm(DayCursor& days, ChartSettings& settings);

    [[nodiscard]] static const char* closeText() { return "Close"; }
    [[nodiscard]] static const char* trendText() { return "Trend"; }
    [[nodiscard]] static const char* spanButton(uint16_t span);

    [[nodiscard]] uint16_t span() const { return m_settings->span(); }
    [[nodiscard]] std::string title() const;
    // Chooses a span (remembered for the run) and collects its history.
    void selectSpan(uint16_t span);
    // Collects the history again, after the logbook changed.
    void refresh();
    [[nodiscard]] const WeightHistory& history() const { return m_history; }

    [[nodiscard]] bool trendShown() const { return m_settings->trendShown(); }
    void setTrendShown(bool shown);
    // The smoothed weight of every day of the history, in pounds; empty while the trend is off.
    [[nodiscard]] const std::vector<std::optional<float>>& trend() const { return m_trend; }
    // "-0.8 lbs/week" over the span's days, in the display unit; empty while the trend is off or
    // the trend has no two days in the span.
    [[nodiscard]] const std::string& rateText() const { return m_rateText; }

private:
    void collectTrend();

    DayCursor* m_days;
    ChartSettings* m_settings;
    WeightHistory m_history;
    std::vector<std::optional<float>> m_trend;
    std::string m_rateText;
};

}  // namespace nutrovex
