#include "charts/BodyMassBands.h"

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {

const std::array<BandLegend, 4> kBandLegend = {{
    {"Un", "= Under"},
    {"No", "= Normal"},
    {"Ov", "= Over"},
    {"Ob", "= Obese"},
}};

namespace {

// Pounds per square inch to kilograms per square metre.
constexpr double kImperialIndexFactor = 703.0;

int16_t wholeInUnit(double pounds, bool metric) {
    return weightToWhole(static_cast<float>(pounds), metric).value;
}

}  // namespace

std::optional<double> bodyMassIndex(float pounds, float inches) {
    if (pounds < 0.0f || inches <= 0.0f) {
        return std::nullopt;
    }
    const double h = inches;
    return kImperialIndexFactor * pounds / (h * h);
}

BodyMassBand bandOf(double index) {
    if (index < kUnderweightBelow) {
        return BodyMassBand::Under;
    }
    if (index < kOverweightFrom) {
        return BodyMassBand::Normal;
    }
    return index < kObeseFrom ? BodyMassBand::Over : BodyMassBand::Obese;
}

double weightAtIndex(double index, float inches) {
    const double h = inches;
    return index * h * h / kImperialIndexFactor;
}

std::optional<BodyMassChart> bodyMassChart(const DayRecord* day, const UserProfile& profile) {
    const bool metric = profile.metric();
    if (day == nullptr) {
        return std::nullopt;
    }
    const WholeResult current = weightToWhole(day->weight(), metric);
    const WholeResult goal = weightToWhole(profile.goalWeight(), metric);
    const WholeResult height = heightToWhole(profile.height(), metric);
    if (current.value < 0 || goal.value < 0 || height.value < 0 || profile.height() <= 0.0f) {
        return std::nullopt;
    }
    BodyMassChart c;
    c.metric = metric;
    c.underweightBelow = wholeInUnit(weightAtIndex(kUnderweightBelow, profile.height()), metric);
    c.overweightFrom = wholeInUnit(weightAtIndex(kOverweightFrom, profile.height()), metric);
    c.obeseFrom = wholeInUnit(weightAtIndex(kObeseFrom, profile.height()), metric);
    c.current = current.value;
    c.goal = goal.value;
    c.currentBand = bandOf(*bodyMassIndex(day->weight(), profile.height()));
    c.goalBand = bandOf(*bodyMassIndex(profile.goalWeight(), profile.height()));
    return c;
}

ScreenMessage missingChartDataMessage() {
    return {"Could not plot one or more data points due to missing height or weight information.",
            "Weight Chart", MessageKind::Warning};
}

}  // namespace nutrovex
