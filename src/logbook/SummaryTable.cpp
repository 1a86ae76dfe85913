#include "logbook/SummaryTable.h"

#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/Format.h"

namespace nutrovex {

namespace {

// The table's nutrient columns, in the stored order of the totals' calories, carbohydrate,
// protein, fiber, fat and saturated fat.
constexpr std::array<int, 6> kColumnNutrient{kCalories, kCarbohydrate, kProtein,
                                             kFiber,    kFat,          kSaturatedFat};

}  // namespace

std::string summaryCell(const DayRecord& day, int column) {
    if (column == 0) {
        return formatText("%02d/%02d", static_cast<int>(day.date().month),
                          static_cast<int>(day.date().day));
    }
    if (column >= 1 && column <= 6) {
        const float value = day.totals()[static_cast<std::size_t>(
            kColumnNutrient[static_cast<std::size_t>(column - 1)])];
        return column == 1 ? formatText("%1.0f", static_cast<double>(value))
                           : formatText("%1.1f g", static_cast<double>(value));
    }
    if (column == 7) {
        return formatText("%u", exerciseTotals(day).calories);
    }
    return {};
}

}  // namespace nutrovex
