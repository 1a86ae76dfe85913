// The catalogue screen over the largest catalogue the files allow (8 groups x 250 categories x
// 100 foods): from the command to the first painted screen, expanding a category, and a find
// typed into the find field. Each is reported beside the same step on an empty catalogue, so the
// ratio shows what the catalogue's size costs; the targets are 50 ms, 5 ms and 10 ms.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <cstdio>
#include <filesystem>
#include <string>

#include "WidgetBenchMain.h"
#include "core/CalendarDate.h"
#include "session/Session.h"
#include "session/SessionSettings.h"
#include "ui/catalogue/CFoodTreeCtrl.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"

namespace {

using namespace nutrovex;

// A session on a fresh root whose catalogue holds `full` ? 200,000 foods : none.
struct Screenful {
    explicit Screenful(bool full)
        : root(std::filesystem::temp_directory_path() /
               ("nutrovex-bench-" + std::to_string(::getpid()) + (full ? "-full" : "-empty"))),
          session(root, clock, settings, {}),
          notifier(session) {
        std::filesystem::remove_all(root);
        std::string reason;
        (void)session.start(reason);
        (void)session.initialLoad();
        if (full) {
            FoodCatalogue& c = session.catalogue();
            for (int g = 0; g < kFoodGroupCount; ++g) {
                auto& group = c.groups[static_cast<std::size_t>(g)];
                group.resize(250);
                for (std::size_t k = 0; k < group.size(); ++k) {
                    char name[64];
                    std::snprintf(name, sizeof name, "Category %03zu", k);
                    group[k].name = name;
                    group[k].foods.resize(100);
                    for (std::size_t f = 0; f < 100; ++f) {
                        std::snprintf(name, sizeof name, "Food %d %03zu %02zu", g, k, f);
                        group[k].foods[f].name = name;
                        group[k].foods[f].text2 = name;
                    }
                }
            }
            c.renumberGroupChunks();
        }
    }
    ~Screenful() { std::filesystem::remove_all(root); }

    std::filesystem::path root;
    FixedClock clock{CalendarDate::fromDmy(21, 11, 2002)};
    MemorySettings settings;
    Session session;
    SessionNotifier notifier;
};

Screenful& screenful(bool full) {
    static Screenful empty(false);
    static Screenful largest(true);
    return full ? largest : empty;
}

void paint(QWidget& w) {
    QApplication::processEvents();
    benchmark::DoNotOptimize(w.grab());
}

void BM_CatalogueOpenToFirstPaint(benchmark::State& state) {
    Screenful& s = screenful(state.range(0) != 0);
    for (auto _ : state) {
        CatalogueDialog dialog(
            CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
            s.notifier, nullptr);
        dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
        dialog.show();
        paint(dialog);
    }
    state.SetLabel(state.range(0) ? "200,000 foods" : "reference: empty catalogue");
}
BENCHMARK(BM_CatalogueOpenToFirstPaint)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_CatalogueExpandCategory(benchmark::State& state) {
    const bool full = state.range(0) != 0;
    Screenful& s = screenful(full);
    CatalogueDialog dialog(
        CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
        s.notifier, nullptr);
    dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    dialog.show();
    paint(dialog);
    CFoodTreeCtrl& tree = *dialog.tree();
    const QModelIndex group = tree.model()->index(5, 0);
    tree.expand(group);
    const QModelIndex category = full ? tree.model()->index(120, 0, group) : group;
    for (auto _ : state) {
        tree.expand(category);
        paint(*tree.viewport());
        state.PauseTiming();
        tree.collapse(category);
        paint(*tree.viewport());
        state.ResumeTiming();
    }
    state.SetLabel(full ? "a category of 100 foods" : "reference: a group without categories");
}
BENCHMARK(BM_CatalogueExpandCategory)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The find field searches when Enter is pressed: the search, the result selected and shown.
void BM_CatalogueFindField(benchmark::State& state) {
    Screenful& s = screenful(state.range(0) != 0);
    CatalogueDialog dialog(
        CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
        s.notifier, nullptr);
    dialog.setMessagePresenter([](const ScreenMessage&) { return true; });
    dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    dialog.show();
    paint(dialog);
    auto* find = dialog.findChild<QLineEdit*>();
    find->setText(QStringLiteral("7 249 99"));  // the very last food
    for (auto _ : state) {
        QTest::keyClick(find, Qt::Key_Return);
        paint(*dialog.tree()->viewport());
    }
    state.SetLabel(state.range(0) ? "200,000 foods, the last one found"
                                  : "reference: empty catalogue, nothing found");
}
BENCHMARK(BM_CatalogueFindField)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return nutrovex::bench::runWidgetBenchmarks(argc, argv);
}
