// What a recipe, a copy and a day's targets cost in the engine on the largest data, for the
// screens' target of 50 ms from command to paint: making a recipe of foods from the far end of a
// catalogue of 200,000, filling an empty day with a full day's foods, and copying a meal into
// another person's twenty-year logbook (read whole, then saved atomically) beside that logbook's
// raw read plus a write-and-fsync of its bytes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "BenchData.h"
#include "calc/TargetProgress.h"
#include "core/StoredSize.h"
#include "foods/DayCopy.h"
#include "foods/DayFoods.h"
#include "foods/Recipes.h"
#include "storage/RecipeFile.h"
#include "storage/UserStorage.h"

namespace {

using namespace nutrovex;
using namespace nutrovex::bench;
using Clock = nutrovex::bench::Clock;
namespace fs = std::filesystem;

// Twenty ingredients, each the last food of a category near the end of its group.
Recipe farRecipe() {
    Recipe r;
    r.name = "Stew";
    r.group = 7;
    r.servings = 6;
    for (int i = 0; i < 20; ++i) {
        const int group = i % kGroups;
        const int category = kCategories - 2 - i;
        // The serials fillCatalogue gives: a category's key, then its foods'.
        const auto serial = static_cast<uint32_t>(
            (group * (kCategories - 1) + category) * (kFoods + 1) + 1 + kFoods);
        char name[32];
        std::snprintf(name, sizeof name, "Sample food no. %06u", serial % 1000000);
        r.ingredients.push_back({static_cast<uint8_t>(group),
                                 "Category " + std::to_string(category), name, 1.5f,
                                 ServingUnit::Cup});
    }
    return r;
}

void BM_RecipeOnTheLargestCatalogue(benchmark::State& state) {
    FoodCatalogue c;
    fillCatalogue(c, kCategories - 1);  // room for the category Recipes
    RecipeBook book;
    const Recipe recipe = farRecipe();
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const RecipeSaveResult saved = saveRecipe(c, book, recipe, RecipeSaveMode::MakeOrUpdate);
        const std::string text = recipesJson(book);
        seconds += secondsSince(start);
        if (!saved.ok()) {
            state.SkipWithError(saved.problem->text.c_str());
            return;
        }
        benchmark::DoNotOptimize(text.data());
    }
    state.counters["ms"] = seconds / static_cast<double>(state.iterations()) * 1e3;
}
BENCHMARK(BM_RecipeOnTheLargestCatalogue)->Unit(benchmark::kMillisecond);

// A day as full as its record can be, of short-named foods.
DayEntries fullDay() {
    DayRecord day(CalendarDate::fromDmy(1, 1, 2020));
    for (uint32_t serial = 1;; ++serial) {
        FoodItem f = makeFood(serial, static_cast<int>(serial % kGroups));
        f.name = "F" + std::to_string(serial);
        f.text2 = f.name;
        if (insertLoggedFood(day, f, f.group, kSortByMeal) == kNoPosition) {
            break;
        }
    }
    return wholeDayEntries(day);
}

void BM_CopyAFullDayToAnEmptyOne(benchmark::State& state) {
    const DayEntries entries = fullDay();
    const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    UserStore store(clock);
    const CalendarDate date = CalendarDate::fromDmy(2, 1, 2020);
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const DayCopyReport report = copyIntoDay(store, date, entries.foods, entries.exercises);
        const TargetProgress progress =
            targetProgress(MacroTargets{}, 2000, store.dayOf(date)->totals());
        seconds += secondsSince(start);
        benchmark::DoNotOptimize(progress.dayWithin);
        if (!report.complete()) {
            state.SkipWithError("the copy left foods out");
            return;
        }
        state.PauseTiming();
        (void)store.removeDay(store.findDay(date));
        state.ResumeTiming();
    }
    state.counters["foods"] = static_cast<double>(entries.foods.size());
    state.counters["ms"] = seconds / static_cast<double>(state.iterations()) * 1e3;
}
BENCHMARK(BM_CopyAFullDayToAnEmptyOne)->Unit(benchmark::kMillisecond);

void BM_CopyAMealIntoAnotherPersonsLogbook(benchmark::State& state) {
    const fs::path folder = benchFolder() / "Other";
    fs::create_directories(folder);
    const fs::path file = folder / "UserDB.ddb";
    fs::copy_file(logbookFile(), file, fs::copy_options::overwrite_existing);
    const ByteBuffer bytes = fileBytes(file);
    const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    std::vector<FoodItem> meal;
    for (uint32_t i = 1; i <= 5; ++i) {
        meal.push_back(makeFood(i, static_cast<int>(i)));
    }
    double copy = 0;
    double reference = 0;
    for (auto _ : state) {
        state.PauseTiming();
        reference += rawReadSeconds(file) + writeAndSyncSeconds(folder / "reference.bin", bytes);
        state.ResumeTiming();
        const auto start = Clock::now();
        auto store = std::make_unique<UserStore>(clock);
        store->userFolderPath = folder;
        store->dataFilePath = file;
        if (!loadUser(*store).ok()) {
            state.SkipWithError("load failed");
            return;
        }
        const DayCopyReport report =
            copyIntoDay(*store, CalendarDate::fromDmy(3, 3, 2031), meal, {});
        if (!report.complete() || !saveUser(*store).ok()) {
            state.SkipWithError("the copy was not saved");
            return;
        }
        copy += secondsSince(start);
        state.PauseTiming();
        store.reset();
        fs::copy_file(logbookFile(), file, fs::copy_options::overwrite_existing);
        state.ResumeTiming();
    }
    reportRatio(state, copy, reference, "read_and_write");
}
BENCHMARK(BM_CopyAMealIntoAnotherPersonsLogbook)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
