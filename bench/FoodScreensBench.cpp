// The food screens on the largest data: painting a screenful of a day of 700 foods, and Log Food
// refilling its lists when the group changes over a catalogue of 200,000 foods.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QPainter>
#include <memory>
#include <string>

#include "WidgetBenchMain.h"
#include "core/FoodCatalogue.h"
#include "foods/DayFoods.h"
#include "forms/foods/FoodGridForm.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {
namespace {

FoodItem food(const std::string& name, uint16_t group, uint16_t meal) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.group = group;
    f.meal = meal;
    f.setReference({1.0f, ServingUnit::Item, 0});
    f.setServing({1.0f, ServingUnit::Item, 0});
    f.setNutrient(kCalories, 120.0f);
    f.setNutrient(kCarbohydrate, 14.5f);
    return f;
}

void paintGridScreenful(benchmark::State& state) {
    FixedClock clock(CalendarDate::fromDmy(10, 3, 2026));
    UserStore store(clock);
    DayCursor days(store);
    days.ensureCurrentDay();
    DayRecord& day = *days.currentRecord();
    for (int i = 0; i < 700; ++i) {
        (void)insertLoggedFood(day,
                               food("Food " + std::to_string(i), static_cast<uint16_t>(i % 8),
                                    static_cast<uint16_t>(i % 4)),
                               i % 8, kSortByMeal);
    }
    FoodRunState run;
    FoodCatalogue catalogue;
    const FoodGridForm form(catalogue, days, run, kAllFoodsGroup);
    const FoodGridView shown = form.view();
    CFoodGridCtrl grid(nullptr);
    grid.show(shown);
    grid.resize(480, 560);
    QImage image(grid.size(), QImage::Format_ARGB32_Premultiplied);
    grid.render(&image);
    for (auto _ : state) {
        grid.render(&image);
        benchmark::DoNotOptimize(image.bits());
    }
    state.counters["rows"] = static_cast<double>(shown.rows.rows.size());
}
BENCHMARK(paintGridScreenful)->Unit(benchmark::kMicrosecond);

// The reference: filling the same surface once, the least a paint can cost.
void fillSurfaceReference(benchmark::State& state) {
    QImage image(480, 560, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        benchmark::DoNotOptimize(image.bits());
    }
}
BENCHMARK(fillSurfaceReference)->Unit(benchmark::kMicrosecond);

void logFoodGroupChange(benchmark::State& state) {
    FoodCatalogue empty;
    empty.renumberGroupChunks();
    ByteBuffer bytes;
    (void)writeCatalogueFile(empty, bytes);
    const auto root =
        std::filesystem::temp_directory_path() / ("nutrovex-bench-" + std::to_string(::getpid()));
    FixedClock clock(CalendarDate::fromDmy(10, 3, 2026));
    MemorySettings settings;
    Session session(root, clock, settings, std::span<const uint8_t>(bytes.data(), bytes.size()));
    std::string reason;
    (void)session.start(reason);
    (void)session.initialLoad();
    FoodCatalogue& c = session.catalogue();
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        for (int k = 0; k < 250; ++k) {
            FoodCategory category;
            category.name = "Category " + std::to_string(1000 + k);
            for (int i = 0; i < 100; ++i) {
                category.foods.push_back(
                    food("Food " + std::to_string(1000 + i), static_cast<uint16_t>(g), 0));
            }
            c.groups[g].push_back(std::move(category));
        }
    }
    SessionNotifier notifier(session);
    LogFoodDialog dialog(
        LogFoodForm(session.catalogue(), session.days(), session.foodRunState(), 0), notifier,
        nullptr);
    int group = 0;
    for (auto _ : state) {
        group = (group + 1) % kFoodGroupCount;
        dialog.groupList()->setCurrentIndex(group);
        Q_EMIT dialog.groupList()->activated(group);
        benchmark::DoNotOptimize(dialog.foodList()->count());
    }
    std::filesystem::remove_all(root);
}
BENCHMARK(logFoodGroupChange)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nutrovex

int main(int argc, char** argv) {
    return nutrovex::bench::runWidgetBenchmarks(argc, argv);
}
