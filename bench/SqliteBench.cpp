// The largest catalogue loaded from SQLite, beside our own load of the same foods in the same run,
// each in a process just started (target: ours at least 10 x faster). One table of one row per
// food, read in insertion order through one prepared statement into the same records.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "BenchData.h"
#include "FreshLoad.h"
#include "storage/CatalogueStorage.h"

namespace nutrovex::bench {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSchema =
    "CREATE TABLE food (grp INTEGER, category_key INTEGER, category_byte INTEGER, "
    "category_name TEXT, key INTEGER, flag INTEGER, name TEXT, text2 TEXT, "
    "serving_amount REAL, serving_unit INTEGER, serving_sub INTEGER, "
    "ref1_amount REAL, ref1_unit INTEGER, ref1_sub INTEGER, "
    "ref2_amount REAL, ref2_unit INTEGER, ref2_sub INTEGER, "
    "calories REAL, carbohydrate REAL, fiber REAL, protein REAL, fat REAL, saturated_fat REAL, "
    "ratio REAL, meal INTEGER, food_group INTEGER)";
constexpr int kColumns = 26;

void check(int rc, sqlite3* db) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
        std::fprintf(stderr, "sqlite: %s\n", sqlite3_errmsg(db));
        std::abort();
    }
}

void bindServing(sqlite3_stmt* s, int column, const ServingQuantity& q) {
    sqlite3_bind_double(s, column, q.amount);
    sqlite3_bind_int(s, column + 1, unitByte(q.unit));
    sqlite3_bind_int(s, column + 2, q.sub);
}

const fs::path& sqliteFile() {
    static const fs::path path = [] {
        const fs::path p = benchFolder() / "foods.sqlite";
        FoodCatalogue c;
        fillLargestCatalogue(c);
        sqlite3* db = nullptr;
        check(sqlite3_open(p.c_str(), &db), db);
        check(sqlite3_exec(db, kSchema, nullptr, nullptr, nullptr), db);
        check(sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr), db);
        std::string insert = "INSERT INTO food VALUES (?";
        for (int i = 1; i < kColumns; ++i) {
            insert += ", ?";
        }
        insert += ")";
        sqlite3_stmt* s = nullptr;
        check(sqlite3_prepare_v2(db, insert.c_str(), -1, &s, nullptr), db);
        for (int g = 0; g < kFoodGroupCount; ++g) {
            for (const FoodCategory& cat : c.groups[static_cast<std::size_t>(g)]) {
                for (const FoodItem& f : cat.foods) {
                    sqlite3_bind_int(s, 1, g);
                    sqlite3_bind_int64(s, 2, cat.key.value);
                    sqlite3_bind_int(s, 3, cat.byte);
                    sqlite3_bind_text(s, 4, cat.name.data(), static_cast<int>(cat.name.size()),
                                      SQLITE_STATIC);
                    sqlite3_bind_int64(s, 5, f.key.value);
                    sqlite3_bind_int(s, 6, f.loggedFlag);
                    sqlite3_bind_text(s, 7, f.name.data(), static_cast<int>(f.name.size()),
                                      SQLITE_STATIC);
                    sqlite3_bind_text(s, 8, f.text2.data(), static_cast<int>(f.text2.size()),
                                      SQLITE_STATIC);
                    bindServing(s, 9, f.serving);
                    bindServing(s, 12, f.ref1);
                    bindServing(s, 15, f.ref2);
                    for (int n = 0; n < kNutrientCount; ++n) {
                        sqlite3_bind_double(s, 18 + n, f.nutrients[static_cast<std::size_t>(n)]);
                    }
                    sqlite3_bind_double(s, 24, f.ratio);
                    sqlite3_bind_int(s, 25, f.meal);
                    sqlite3_bind_int(s, 26, f.group);
                    check(sqlite3_step(s), db);
                    sqlite3_reset(s);
                }
            }
        }
        sqlite3_finalize(s);
        check(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), db);
        sqlite3_close(db);
        return p;
    }();
    return path;
}

Text textColumn(sqlite3_stmt* s, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(s, column));
    return Text(std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(s, column))));
}

ServingQuantity servingColumns(sqlite3_stmt* s, int column) {
    return {static_cast<float>(sqlite3_column_double(s, column)),
            unitFromByte(static_cast<uint8_t>(sqlite3_column_int(s, column + 1))),
            static_cast<uint8_t>(sqlite3_column_int(s, column + 2))};
}

// Opens the database and reads every row into the catalogue, as a program keeping its catalogue
// in SQLite would on start.
bool loadFromSqlite(const fs::path& path, FoodCatalogue& c) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return false;
    }
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, "SELECT * FROM food", -1, &s, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return false;
    }
    FoodCategory* category = nullptr;
    int rc = 0;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        const auto g = static_cast<std::size_t>(sqlite3_column_int(s, 0));
        const auto categoryKey = static_cast<uint32_t>(sqlite3_column_int64(s, 1));
        if (g >= kFoodGroupCount) {
            break;
        }
        if (category == nullptr || category->key.value != categoryKey ||
            &c.groups[g].back() != category) {
            category = &c.groups[g].emplace_back();
            category->key.value = categoryKey;
            category->byte = static_cast<uint8_t>(sqlite3_column_int(s, 2));
            category->name = textColumn(s, 3);
        }
        FoodItem& f = category->foods.emplace_back();
        f.key.value = static_cast<uint32_t>(sqlite3_column_int64(s, 4));
        f.loggedFlag = static_cast<uint8_t>(sqlite3_column_int(s, 5));
        f.name = textColumn(s, 6);
        f.text2 = textColumn(s, 7);
        f.serving = servingColumns(s, 8);
        f.ref1 = servingColumns(s, 11);
        f.ref2 = servingColumns(s, 14);
        for (int n = 0; n < kNutrientCount; ++n) {
            f.nutrients[static_cast<std::size_t>(n)] =
                static_cast<float>(sqlite3_column_double(s, 17 + n));
        }
        f.ratio = static_cast<float>(sqlite3_column_double(s, 23));
        f.meal = static_cast<uint16_t>(sqlite3_column_int(s, 24));
        f.group = static_cast<uint16_t>(sqlite3_column_int(s, 25));
    }
    sqlite3_finalize(s);
    sqlite3_close(db);
    return rc == SQLITE_DONE;
}

bool loadSqliteFile(const char* path) {
    auto c = std::make_unique<FoodCatalogue>();
    const bool read = loadFromSqlite(path, *c) && c->foodCount() == kGroups * kCategories * kFoods;
    (void)c.release();  // the process ends here: freeing is not part of the load
    return read;
}

const bool registered = [] {
    freshLoads()["sqlite"] = loadSqliteFile;
    return true;
}();

void BM_CatalogueLoadFromSqlite(benchmark::State& state) {
    const std::string ours = catalogueFile().string();
    const std::string theirs = sqliteFile().string();
    for (auto _ : state) {
        const FreshLoadFigures sqlite = runFreshLoad("sqlite", theirs);
        const FreshLoadFigures load = runFreshLoad("catalogue", ours);
        if (!sqlite.ok || !load.ok) {
            state.SkipWithError("a load failed");
            return;
        }
        state.SetIterationTime(sqlite.loadSeconds);
        // Here the reference is our load: the ratio is how many times faster ours is.
        state.counters["ours_ms"] = load.loadSeconds * 1e3;
        state.counters["ratio"] = sqlite.loadSeconds / load.loadSeconds;
        reportLoadAverage(state);
    }
    state.SetLabel("target: ratio >= 10");
}
BENCHMARK(BM_CatalogueLoadFromSqlite)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 15);
});

}  // namespace

}  // namespace nutrovex::bench
