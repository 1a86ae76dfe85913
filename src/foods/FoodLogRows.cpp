#include "foods/FoodLogRows.h"

#include <cstdint>
#include <cstdio>

#include "calc/Totals.h"
#include "core/Format.h"
#include "core/ServingUnits.h"
#include "core/UserStore.h"

namespace nutrovex {

namespace {

constexpr const char* kNutrientFormats[kNutrientCount] = {
    "%d  cal", "%1.1fg  Carb", "%1.1fg  Fib", "%1.1fg  Prot", "%1.1fg  Fat", "%1.1fg  SFat"};

LogRow fixedRow(LogRowKind kind, const char* text) {
    LogRow row;
    row.kind = kind;
    row.text = text;
    return row;
}

void setNutrients(LogRow& row, const Nutrients& values) {
    for (int n = 0; n < kNutrientCount; ++n) {
        row.nutrients[static_cast<std::size_t>(n)] =
            nutrientText(n, values[static_cast<std::size_t>(n)]);
    }
}

}  // namespace

Notices applyViewCommand(FoodLogView& view, FoodLogCommand command) {
    switch (command) {
        case FoodLogCommand::SortAlphabetical:
            view.sortMode = kSortAlphabetical;
            break;
        case FoodLogCommand::SortByMeal:
            view.sortMode = kSortByMeal;
            break;
        case FoodLogCommand::SortToggle:
        case FoodLogCommand::SortAlphaBlds:
            view.sortMode = view.sortMode == kSortAlphabetical ? kSortByMeal : kSortAlphabetical;
            break;
        case FoodLogCommand::NutrientToggle:
            view.nutrientView = static_cast<uint16_t>((view.nutrientView + 1) % kNutrientViewCount);
            break;
    }
    return Notices{.userData = true};
}

int shownCalories(float value) {
    const double v = static_cast<double>(value) + 0.5;
    if (!(v > -2147483648.0)) {
        return v != v ? 0 : INT32_MIN;
    }
    if (v >= 2147483647.0) {
        return INT32_MAX;
    }
    return static_cast<int>(v);
}

std::string nutrientText(int nutrient, float value) {
    if (nutrient == kCalories) {
        return formatText(kNutrientFormats[0], shownCalories(value));
    }
    if (nutrient < 0 || nutrient >= kNutrientCount) {
        return {};
    }
    return formatText(kNutrientFormats[nutrient], static_cast<double>(value));
}

std::string servingText(const ServingQuantity& serving) {
    const char* name = unitName(serving.unit);
    const char* unit = name != nullptr ? name : "";
    return formatText("%1.2f %s", static_cast<double>(serving.amount), unit);
}

const char* mealName(uint16_t meal) {
    return meal < kMealCount ? kMealNames[meal] : "";
}

std::pair<int, int> viewNutrients(uint16_t nutrientView) {
    switch (nutrientView) {
        case 1:
            return {kProtein, kFiber};
        case 2:
            return {kFat, kSaturatedFat};
        default:
            return {kCalories, kCarbohydrate};
    }
}

FoodLogRows foodLogRows(const DayRecord* day, int shownGroup, uint16_t sortMode) {
    FoodLogRows out;
    out.rows.push_back(fixedRow(LogRowKind::FoodHeader, kFoodLogHeader));
    const bool validGroup = shownGroup >= 0 && shownGroup <= kAllFoodsGroup;
    const FoodList* list = (day && validGroup) ? &day->group(shownGroup) : nullptr;
    if (list && !list->empty()) {
        out.firstFoodRow = static_cast<Position>(out.rows.size());
        const std::vector<Position> order = presentedOrder(*list, sortMode);
        for (std::size_t p = 0; p < order.size(); ++p) {
            const FoodItem& f = (*list)[order[p]];
            LogRow row;
            row.kind = LogRowKind::Food;
            row.text = f.name.str();
            row.serving = servingText(f.serving);
            Nutrients shown{};
            for (int n = 0; n < kNutrientCount; ++n) {
                shown[static_cast<std::size_t>(n)] = f.shownNutrient(n);
            }
            setNutrients(row, shown);
            row.meal = mealName(f.meal);
            row.entry = static_cast<Position>(p);
            out.rows.push_back(std::move(row));
        }
        out.foodCount = static_cast<Position>(order.size());
    } else {
        out.rows.push_back(fixedRow(LogRowKind::NoFoods, kNoFoodsText));
    }
    LogRow totals = fixedRow(LogRowKind::FoodTotals, kTotalsText);
    setNutrients(totals, (day && validGroup) ? groupTotals(*day, shownGroup) : Nutrients{});
    out.rows.push_back(std::move(totals));

    out.rows.push_back(fixedRow(LogRowKind::ExerciseHeader, kExerciseLogHeader));
    if (day) {
        const ExerciseList& exercises = day->exercises();
        for (std::size_t i = 0; i < exercises.size(); ++i) {
            LogRow row;
            row.kind = LogRowKind::Exercise;
            row.text = exercises[i].name.str();
            row.minutes = formatText("%d Minutes", static_cast<int>(exercises[i].minutes));
            row.calories = formatText("%d cal", static_cast<int>(exercises[i].calories));
            row.entry = static_cast<Position>(i);
            out.rows.push_back(std::move(row));
        }
    }
    LogRow exerciseTotal = fixedRow(LogRowKind::ExerciseTotals, kTotalsText);
    const uint32_t burnt = day ? exerciseTotals(*day).calories : 0;
    exerciseTotal.calories = formatText("%d cal", static_cast<int>(burnt));
    out.rows.push_back(std::move(exerciseTotal));
    return out;
}

}  // namespace nutrovex
