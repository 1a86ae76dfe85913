#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/ChartSettings.h"
#include "charts/WeightHistory.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class DayCursor;

struct HistoricChartView {
    std::string title;  // "Historic Weight (7-Day)"
    uint16_t span = 0;
    WeightHistory history;
    bool trendShown = false;
    // The smoothed weight of every day of the history, in pounds; empty while the trend is off.
    std::vector<std::optional<float>> trend;
    // "Trend (28 days): -0.8 lbs/week", the trend's recent rate up to the chart's last day, in the
    // display unit, as the food budget page gives it; empty while the trend is off or has no two
    // days.
    std::string rateText;
};

// The historic weight chart screen: the span buttons, the history of the chosen span, and the
// trend line with its weekly rate when the person asks for it. Read only.
class HistoricChartForm {
public:
    HistoricChartForm(DayCursor& days, ChartSettings& settings)
        : m_days(&days), m_settings(&settings) {}

    enum class Command : uint8_t {
        // The span buttons, in span order; the span is remembered for the run.
        Span7Days,
        Span14Days,
        Span1Month,
        Span3Months,
        Span6Months,
        Span1Year,
        Span5Years,
        ShowTrend,
        HideTrend,
    };

    [[nodiscard]] static const char* closeText() { return "Close"; }
    [[nodiscard]] static const char* trendText() { return "Trend"; }
    [[nodiscard]] static const char* spanButton(uint16_t span);

    // Collects the history of the chosen span as the logbook now holds it.
    [[nodiscard]] HistoricChartView view() const;
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
    ChartSettings* m_settings;
};

}  // namespace nutrovex
