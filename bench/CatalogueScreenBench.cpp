// The catalogue screen over the largest catalogue the files allow (8 groups x 250 categories x
// 100 foods), and over the catalogue a new person starts with: from the command to the first
// painted screen, expanding a category, and a find typed into the find field. Each is reported
// beside the same step on an empty catalogue, so the ratio shows what the catalogue's size costs;
// the targets are 50 ms, 5 ms and 10 ms.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "WidgetBenchMain.h"
#include "core/CalendarDate.h"
#include "data/ShippedCatalogue.h"
#include "session/Session.h"
#include "session/SessionSettings.h"
#include "storage/CatalogueFile.h"
#include "ui/catalogue/CFoodTreeCtrl.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"

namespace {

using namespace nutrovex;

enum Catalogue { kEmpty, kLargest, kShipped };
const char* const kSuffixes[] = {"-empty", "-full", "-shipped"};

// A session on a fresh root whose catalogue holds no food, 200,000 foods or the shipped ones.
struct Screenful {
    explicit Screenful(Catalogue kind)
        : root(std::filesystem::temp_directory_path() /
               ("nutrovex-bench-" + std::to_string(::getpid()) + kSuffixes[kind])),
          session(root, clock, settings, {}),
          notifier(session) {
        std::filesystem::remove_all(root);
        std::string reason;
        (void)session.start(reason);
        (void)session.initialLoad();
        if (kind == kShipped) {
            FoodCatalogue& c = session.catalogue();
            if (!readCatalogueFile(shippedCatalogue(), c, {"FoodDB.ddb"}).ok()) {
                std::fprintf(stderr, "the shipped catalogue does not read\n");
                std::exit(1);
            }
            c.newRevision();
        }
        if (kind == kLargest) {
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

Screenful& screenful(int64_t kind) {
    static Screenful empty(kEmpty);
    static Screenful largest(kLargest);
    static Screenful shipped(kShipped);
    return kind == kLargest ? largest : kind == kShipped ? shipped : empty;
}

const char* label(int64_t kind, const char* largest, const char* shipped, const char* empty) {
    return kind == kLargest ? largest : kind == kShipped ? shipped : empty;
}

// The shipped catalogue's largest category, and the name of its very last food.
std::pair<int, int> largestCategory(const FoodCatalogue& c) {
    std::pair<int, int> at{0, 0};
    std::size_t most = 0;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const auto& group = c.groups[static_cast<std::size_t>(g)];
        for (std::size_t k = 0; k < group.size(); ++k) {
            if (group[k].foods.size() > most) {
                most = group[k].foods.size();
                at = {g, static_cast<int>(k)};
            }
        }
    }
    return at;
}

void paint(QWidget& w) {
    QApplication::processEvents();
    benchmark::DoNotOptimize(w.grab());
}

void BM_CatalogueOpenToFirstPaint(benchmark::State& state) {
    Screenful& s = screenful(state.range(0));
    for (auto _ : state) {
        CatalogueDialog dialog(
            CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
            s.notifier, nullptr);
        dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
        dialog.show();
        paint(dialog);
    }
    state.SetLabel(label(state.range(0), "200,000 foods", "the shipped catalogue",
                         "reference: empty catalogue"));
}
BENCHMARK(BM_CatalogueOpenToFirstPaint)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

void BM_CatalogueExpandCategory(benchmark::State& state) {
    const int64_t kind = state.range(0);
    Screenful& s = screenful(kind);
    CatalogueDialog dialog(
        CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
        s.notifier, nullptr);
    dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    dialog.show();
    paint(dialog);
    CFoodTreeCtrl& tree = *dialog.tree();
    const auto [g, k] =
        kind == kShipped ? largestCategory(s.session.catalogue()) : std::pair<int, int>{5, 120};
    const QModelIndex group = tree.model()->index(g, 0);
    tree.expand(group);
    const QModelIndex category = kind == kEmpty ? group : tree.model()->index(k, 0, group);
    for (auto _ : state) {
        tree.expand(category);
        paint(*tree.viewport());
        state.PauseTiming();
        tree.collapse(category);
        paint(*tree.viewport());
        state.ResumeTiming();
    }
    state.SetLabel(label(kind, "a category of 100 foods", "its largest category",
                         "reference: a group without categories"));
}
BENCHMARK(BM_CatalogueExpandCategory)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// The find field searches when Enter is pressed: the search, the result selected and shown.
void BM_CatalogueFindField(benchmark::State& state) {
    const int64_t kind = state.range(0);
    Screenful& s = screenful(kind);
    CatalogueDialog dialog(
        CatalogueForm(s.session.catalogue(), s.session.days(), s.session.foodRunState()),
        s.notifier, nullptr);
    dialog.setMessagePresenter([](const ScreenMessage&) { return true; });
    // The find screen's first result is taken, as its OK would.
    dialog.setFindRunner([](const FindFoodForm& found) { return found.chosen(); });
    dialog.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    dialog.show();
    paint(dialog);
    auto* find = dialog.findChild<QLineEdit*>();
    // The very last food.
    const CategoryList& last = s.session.catalogue().groups[kFoodGroupCount - 1];
    find->setText(kind == kShipped ? QString::fromLatin1(last.back().foods.back().name.str())
                                   : QStringLiteral("7 249 99"));
    for (auto _ : state) {
        QTest::keyClick(find, Qt::Key_Return);
        paint(*dialog.tree()->viewport());
    }
    state.SetLabel(label(kind, "200,000 foods, the last one found",
                         "the shipped catalogue, its last food found",
                         "reference: empty catalogue, nothing found"));
}
BENCHMARK(BM_CatalogueFindField)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return nutrovex::bench::runWidgetBenchmarks(argc, argv);
}
