#include "logbook/Logbook.h"

#include <cmath>
#include <cstdio>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/DayRecord.h"
#include "core/Format.h"
#include "core/UserProfile.h"
#include "logbook/WeighIn.h"

namespace nutrovex {

const char* logbookWeightUnit(bool metric) {
    return metric ? "kg" : "lbs";
}

std::string subtractedCalories(long calories) {
    return calories >= 1 ? formatText("- %ld", calories) : formatText("%ld", calories);
}

long netCalories(float mealCalories, int bmr, uint32_t exerciseCalories) {
    const auto meals = static_cast<long>(std::round(static_cast<double>(mealCalories)));
    return meals - bmr - static_cast<long>(exerciseCalories);
}

std::string netTotalText(long net) {
    return net < 0 ? formatText("- %ld", -net) : formatText("%ld", net);
}

std::string goalLine(const UserProfile& profile) {
    const GoalPlan& plan = profile.plan();
    const auto days = planDays(plan);
    const auto change = planWeightChange(plan);
    const auto perDay = planCaloriesPerDay(plan);
    if (!days || !change || !perDay) {
        return {};
    }
    // A planned deficit shows negative, the sign of the total above it.
    return formatText("Goal: %ld cal", -static_cast<long>(*perDay));
}

LogbookFigures logbookFigures(const CalendarDate& date, const DayRecord* day,
                              const UserProfile& profile, bool found, Position index,
                              uint16_t count) {
    LogbookFigures f;
    f.date = longDateText(date);
    const char* unit = logbookWeightUnit(profile.metric());
    const WholeResult weight =
        day != nullptr ? dayWeightToWhole(day->weight(), profile.metric()) : WholeResult{};
    f.weight = day != nullptr && weight.value >= 1 ? formatText("%d  %s", weight.value, unit)
                                                   : formatText("---  %s", unit);
    if (day != nullptr) {
        // Halves away from zero, as the net total below rounds them (printf would round to even).
        f.meals = formatText("%1.0f", std::round(static_cast<double>(day->totals()[0])) + 0.0);
        f.bmr = subtractedCalories(day->bmr());
        f.exercise = subtractedCalories(static_cast<long>(day->exerciseCalories));
        f.total = netTotalText(netCalories(day->totals()[0], day->bmr(), day->exerciseCalories));
        f.water = formatText("%d", static_cast<int>(static_cast<int16_t>(day->water())));
    } else {
        f.meals = "0";
        f.bmr = "0";
        f.exercise = "0";
        f.total = "0";
        f.water = "0";
    }
    f.record = found ? formatText("Record: %d of %d", index + 1, static_cast<int>(count))
                     : formatText("Record: -- of %d", static_cast<int>(count));
    f.goal = goalLine(profile);
    return f;
}

}  // namespace nutrovex
