#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "calc/ExerciseCalories.h"
#include "calc/FoodBudget.h"
#include "calc/Goals.h"
#include "calc/Totals.h"
#include "charts/MeasuredMaintenance.h"
#include "core/Cp1252.h"
#include "core/Names.h"
#include "core/ServingUnits.h"
#include "tool/Eval.h"

namespace nutrovex::tool {

namespace {

Json wholeAnswer(const WholeResult& r) {
    return {{"ok", r.ok}, {"value", r.value}};
}

// The plan of the four goal fields of a request, computed from a fresh (zero) plan.
GoalPlan requestPlan(const Json& r) {
    GoalPlan plan;
    computeGoalPlan(plan, floatField(r, "startWeight"), dateField(r, "startDate"),
                    floatField(r, "goalWeight"), dateField(r, "goalDate"));
    return plan;
}

Json weightToWholeOp(const Json& r) {
    return wholeAnswer(weightToWhole(floatField(r, "weight"), boolField(r, "toKg")));
}

Json heightToWholeOp(const Json& r) {
    return wholeAnswer(heightToWhole(floatField(r, "height"), boolField(r, "toCm")));
}

Json bmrOp(const Json& r) {
    UserProfile profile;
    ProfileFields& p = profile.rawFields();
    p.height = floatField(r, "height");
    p.age = intField<int16_t>(r, "age");
    p.gender = intField<uint16_t>(r, "gender");
    const float weight = floatField(r, "weight");
    const auto level = intField<uint16_t>(r, "level");
    const BmrResult b = computeBmr(profile, level, weight);
    return {{"ok", b.ok}, {"bmr", b.bmr}};
}

Json exerciseOp(const Json& r) {
    const ExerciseSelection s{intField<int16_t>(r, "type"), intField<int16_t>(r, "variant"),
                              intField<int16_t>(r, "sub")};
    const auto weight = intField<int16_t>(r, "weight");
    const auto minutes = intField<int16_t>(r, "minutes");
    const ExerciseCaloriesResult c = computeExerciseCalories(s, weight, minutes);
    return {{"ok", c.ok}, {"calories", c.calories}};
}

// A request's unit code: every code past the last unit converts alike, so the largest byte
// stands for all of them.
ServingUnit requestUnit(const Json& r, const char* name) {
    return unitFromByte(
        static_cast<uint8_t>(std::min<uint32_t>(intField<uint32_t>(r, name), 0xFF)));
}

Json convertOp(const Json& r) {
    const float amount = floatField(r, "amount");
    const ServingUnit from = requestUnit(r, "from");
    const ServingUnit to = requestUnit(r, "to");
    float out = 0.0f;
    const ConvertResult c = convertServing(amount, from, to, out);
    Json answer = {{"ok", c != ConvertResult::Failed}};
    if (c == ConvertResult::Converted) {
        answer["amount"] = floatJson(out);
    }
    return answer;
}

Json servingFactorOp(const Json& r) {
    const ServingQuantity ref = servingValue(field(r, "ref"), "ref");
    const ServingQuantity logged = servingValue(field(r, "logged"), "logged");
    return {{"factor", floatJson(servingFactor(ref, logged))}};
}

Json goalPlanOp(const Json& r) {
    const GoalPlan plan = requestPlan(r);
    return {{"valid", plan.valid != 0},
            {"change", static_cast<int32_t>(plan.change)},
            {"days", static_cast<int32_t>(plan.days)},
            {"perDay", static_cast<int32_t>(plan.perDay)}};
}

Json goalSentenceOp(const Json& r) {
    const GoalPlan plan = requestPlan(r);
    const bool metric = intField<uint16_t>(r, "units") == 1;
    return {{"text", goalSentence(plan, metric)}};
}

Json dateOp(const Json& r) {
    const CalendarDate date = dateField(r, "date");
    const uint16_t packed = packDate(date);
    return {{"dayNumber", dayNumber(packed)},
            {"weekday", weekdayOf(packed)},
            {"leap", isLeapYear(packed)},
            {"long", cp1252ToUtf8(longDateText(date))}};
}

Json stepOp(const Json& r) {
    const CalendarDate date = dateField(r, "date");
    const auto n = intField<int32_t>(r, "n");
    return {{"date", dateJson(steppedDate(date, n))}};
}

Json uniqueNameOp(const Json& r) {
    const std::string wanted = cp1252Field(r, "wanted");
    const Json& takenJson = field(r, "taken");
    if (!takenJson.is_array()) {
        throw JsonShapeError("'taken' must be a list of names");
    }
    std::vector<std::string> taken;
    taken.reserve(takenJson.size());
    for (const Json& name : takenJson) {
        if (!name.is_string()) {
            throw JsonShapeError("each of 'taken' must be a string");
        }
        taken.push_back(textValue(name, "taken").str());
    }
    const std::string name = uniqueName(wanted, [&](std::string_view candidate) {
        for (const std::string& t : taken) {
            if (t == candidate) {
                return true;
            }
        }
        return false;
    });
    return {{"name", cp1252ToUtf8(name)}};
}

Json nameOrderOp(const Json& r) {
    const int c = compareNames(cp1252Field(r, "a"), cp1252Field(r, "b"));
    return {{"order", c < 0 ? -1 : (c > 0 ? 1 : 0)}};
}

Json dayTotalsOp(const Json& r) {
    DayRecord day(CalendarDate{});
    DayFields& d = day.rawFields();
    const Json& groups = field(r, "groups");
    if (!groups.is_array() || groups.size() != kFoodGroupCount) {
        throw JsonShapeError("'groups' must be a list of eight food lists");
    }
    for (std::size_t g = 0; g < d.groups.size(); ++g) {
        if (!groups[g].is_array()) {
            throw JsonShapeError("each of 'groups' must be a list of foods");
        }
        for (const Json& food : groups[g]) {
            d.groups[g].push_back(foodValue(food));
        }
    }
    const Json& exercises = field(r, "exercises");
    if (!exercises.is_array()) {
        throw JsonShapeError("'exercises' must be a list");
    }
    for (const Json& e : exercises) {
        d.exercises.push_back(exerciseValue(e));
    }
    // Level 0: the recomputation leaves the BMR alone, so no profile is needed.
    recomputeDay(day, UserProfile{});
    return {{"totals", nutrientsJson(day.totals())},
            {"calories", day.caloriesIn},
            {"exerciseCalories", day.exerciseCalories},
            {"exerciseMinutes", day.exerciseMinutes}};
}

Json foodBudgetOp(const Json& r) {
    const Json& dayJson = field(r, "day");
    DayRecord day(CalendarDate{});
    DayFields& d = day.rawFields();
    d.weight = floatField(dayJson, "weight");
    d.level = intField<uint16_t>(dayJson, "level");
    d.bmr = intField<int16_t>(dayJson, "bmr");
    day.exerciseCalories = intField<uint32_t>(dayJson, "exerciseCalories");
    UserProfile profile;
    readProfileForCalc(field(r, "profile"), profile);
    return {{"text", foodBudgetText(&day, profile)}};
}

Json maintenanceOp(const Json& r) {
    const int32_t current = dayNumber(dateField(r, "current"));
    const Json& daysJson = field(r, "days");
    if (!daysJson.is_array()) {
        throw JsonShapeError("'days' must be a list of days");
    }
    std::vector<DaySample> days;
    days.reserve(daysJson.size());
    for (const Json& d : daysJson) {
        if (!d.is_object()) {
            throw JsonShapeError("each of 'days' must be an object");
        }
        days.push_back({dayNumber(dateField(d, "date")), floatField(d, "weight"),
                        static_cast<double>(intField<uint32_t>(d, "calories"))});
    }
    const Maintenance m = measureMaintenance(days, current);
    return {{"valid", m.valid},
            {"calories", m.valid ? roundedMaintenance(m.calories) : 0},
            {"loggedDays", m.loggedDays},
            {"weighIns", m.weighIns},
            {"trendStart", floatJson(m.trendStart.value_or(-1.0f))},
            {"trendEnd", floatJson(m.trendEnd.value_or(-1.0f))}};
}

}  // namespace

void registerCalcOps(EvalRegistry& registry) {
    registry["weightToWhole"] = weightToWholeOp;
    registry["heightToWhole"] = heightToWholeOp;
    registry["bmr"] = bmrOp;
    registry["exercise"] = exerciseOp;
    registry["convert"] = convertOp;
    registry["servingFactor"] = servingFactorOp;
    registry["goalPlan"] = goalPlanOp;
    registry["goalSentence"] = goalSentenceOp;
    registry["date"] = dateOp;
    registry["step"] = stepOp;
    registry["uniqueName"] = uniqueNameOp;
    registry["nameOrder"] = nameOrderOp;
    registry["dayTotals"] = dayTotalsOp;
    registry["foodBudget"] = foodBudgetOp;
    registry["maintenance"] = maintenanceOp;
}

}  // namespace nutrovex::tool
