#pragma once

#include <optional>
#include <string>

#include "charts/BodyMassBands.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class DayCursor;

// The chart with body-mass bands for the logbook's current day: the texts of its screen, and
// whether it may open at all.
class BodyMassChartForm {
public:
    explicit BodyMassChartForm(DayCursor& days);

    [[nodiscard]] static const char* title() { return "Weight Chart"; }
    [[nodiscard]] static const char* okText() { return "OK"; }
    [[nodiscard]] static const char* currentText() { return "Current"; }
    [[nodiscard]] static const char* goalText() { return "Goal"; }

    // The refusal shown instead of opening when a weight or the height is missing.
    [[nodiscard]] static std::optional<ScreenMessage> openRefusal(DayCursor& days);

    // Reads the current day and the profile again.
    void refresh();
    // nullopt while a value it needs is missing.
    [[nodiscard]] const std::optional<BodyMassChart>& chart() const { return m_chart; }
    // "220 lbs (Obese)": a weight in the display unit with its band; empty without a chart.
    [[nodiscard]] std::string currentSummary() const;
    [[nodiscard]] std::string goalSummary() const;

private:
    DayCursor* m_days;
    std::optional<BodyMassChart> m_chart;
};

}  // namespace nutrovex
