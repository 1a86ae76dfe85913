#pragma once

#include <optional>
#include <string>

#include "charts/BodyMassBands.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class DayCursor;

struct BodyMassChartView {
    // nullopt while a value it needs is missing.
    std::optional<BodyMassChart> chart;
    // "220 lbs (Obese)": a weight in the display unit with its band; empty without a chart.
    std::string currentSummary;
    std::string goalSummary;
};

// The chart with body-mass bands for the logbook's current day: the texts of its screen, and
// whether it may open at all. Read only.
class BodyMassChartForm {
public:
    explicit BodyMassChartForm(DayCursor& days) : m_days(&days) {}

    [[nodiscard]] static const char* title() { return "Weight Chart"; }
    [[nodiscard]] static const char* okText() { return "OK"; }
    [[nodiscard]] static const char* currentText() { return "Current"; }
    [[nodiscard]] static const char* goalText() { return "Goal"; }

    // The refusal shown instead of opening when a weight or the height is missing.
    [[nodiscard]] std::optional<ScreenMessage> openRefusal() const;
    // Reads the current day and the profile.
    [[nodiscard]] BodyMassChartView view() const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
