#include "foods/DayCopy.h"

#include <memory>

#include "calc/Totals.h"
#include "core/StoredSize.h"
#include "foods/DayFoods.h"

namespace nutrovex {

namespace {

std::string names(const std::vector<std::string>& list) {
    std::string out;
    for (const std::string& n : list) {
        out += out.empty() ? "" : ", ";
        out += n;
    }
    return out;
}

std::string counted(std::size_t left, std::size_t of, const char* one, const char* many) {
    return std::to_string(left) + " of " + std::to_string(of) + " " + (of == 1 ? one : many);
}

}  // namespace

FoodList selectedEntries(const DayRecord& day, const FoodLogView& view, FoodSelection selection) {
    FoodList out;
    for (std::size_t i = 0; i < selection.count; ++i) {
        const std::size_t pos = selection.first + i;
        const FoodItem* f = pos < kNoPosition ? presentedFood(day, view.shownGroup, view.sortMode,
                                                              static_cast<Position>(pos))
                                              : nullptr;
        if (f == nullptr) {
            break;
        }
        out.push_back(*f);
    }
    return out;
}

FoodList mealEntries(const DayRecord& day, int shownGroup, uint16_t meal) {
    FoodList out;
    if (shownGroup < 0 || shownGroup > kAllFoodsGroup) {
        return out;
    }
    for (const FoodItem& f : day.group(shownGroup)) {
        if (f.meal == meal) {
            out.push_back(f);
        }
    }
    return out;
}

DayEntries wholeDayEntries(const DayRecord& day) {
    DayEntries out;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const FoodList& list = day.group(g);
        out.foods.insert(out.foods.end(), list.begin(), list.end());
    }
    out.exercises = day.exercises();
    return out;
}

bool isStorableDate(const CalendarDate& date) {
    return date.year >= 1904 && date.year <= 2031 && date.month >= 1 && date.month <= 12 &&
           date.day >= 1 && date.day <= daysInMonth(date.month, date.year);
}

DayCopyReport copyIntoDay(UserStore& store, const CalendarDate& date,
                          std::span<const FoodItem> foods, std::span<const ExerciseEntry> exercises,
                          const std::string& caption) {
    DayCopyReport report;
    if (foods.empty() && exercises.empty()) {
        return report;
    }
    if (!isStorableDate(date)) {
        report.message = ScreenMessage{"Choose a date from 1/1/1904 to 12/31/2031.", caption,
                                       MessageKind::Warning};
        return report;
    }
    DayRecord* day = store.dayOf(date);
    if (day == nullptr) {
        const Position at = store.insertDay(
            std::make_unique<DayRecord>(CalendarDate::fromDmy(date.day, date.month, date.year)));
        if (at == kNoPosition) {
            report.message = ScreenMessage{"The logbook holds as many days as it can.", caption,
                                           MessageKind::Warning};
            return report;
        }
        day = &store.dayAt(at);
        report.dayCreated = true;
    }
    for (const FoodItem& f : foods) {
        FoodItem copy = f;
        copy.loggedFlag = 1;
        const PackedKey counter = store.header.keyCounter;
        copy.key = store.nextEntryKey();
        if (copy.group >= kFoodGroupCount ||
            insertLoggedFood(*day, copy, copy.group, kSortByMeal) == kNoPosition) {
            store.header.keyCounter = counter;  // nothing logged, no key spent
            report.foodsLeftOut.push_back(f.name.str());
            continue;
        }
        ++report.foodsCopied;
    }
    for (const ExerciseEntry& e : exercises) {
        ExerciseEntry copy = e;
        const PackedKey counter = store.header.keyCounter;
        copy.key = store.nextEntryKey();
        if (day->appendExercise(std::move(copy)) == kNoPosition) {
            store.header.keyCounter = counter;
            report.exercisesLeftOut.push_back(e.name.str());
            continue;
        }
        ++report.exercisesCopied;
    }

    if (report.foodsCopied + report.exercisesCopied == 0) {
        if (report.dayCreated) {
            (void)store.removeDay(store.findDay(date));
            report.dayCreated = false;
        }
    } else {
        (void)dayTotals(*day);
        report.notices =
            Notices{.userData = true, .dataChanged = true, .dayCreated = report.dayCreated};
    }
    if (!report.foodsLeftOut.empty() || !report.exercisesLeftOut.empty()) {
        std::string what;
        if (!report.foodsLeftOut.empty()) {
            what = counted(report.foodsLeftOut.size(), foods.size(), "food", "foods") + " (" +
                   names(report.foodsLeftOut) + ")";
        }
        if (!report.exercisesLeftOut.empty()) {
            what += what.empty() ? "" : " and ";
            what +=
                counted(report.exercisesLeftOut.size(), exercises.size(), "exercise", "exercises") +
                " (" + names(report.exercisesLeftOut) + ")";
        }
        report.message = ScreenMessage{
            "This day holds as much as one day can: " + what + " could not be copied.", caption,
            MessageKind::Warning};
    }
    return report;
}

}  // namespace nutrovex
