// A process saving in a loop is killed with SIGKILL at random moments: the file on disk must be
// the old or the new version byte for byte, never a mix, and must always open; the next
// successful save leaves no temporary file behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <random>

#include "SaveFaultTestUtil.h"
#include "storage/CatalogueStorage.h"
#include "storage/RecipeFile.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

using namespace test;
namespace fs = std::filesystem;

constexpr int kKills = 200;

struct KillRun {
    fs::path folder;
    std::string fileName;
    std::function<bool(bool newer)> save;
    std::function<bool()> opens;
};

void killSavesAtRandom(const KillRun& run) {
    const fs::path file = run.folder / run.fileName;
    ASSERT_TRUE(run.save(true));
    const Bytes newer = readBytes(file);
    ASSERT_TRUE(run.save(false));
    const Bytes older = readBytes(file);
    ASSERT_NE(older, newer);

    // Kills are spread over a little more than the time the child takes for two saves.
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(run.save(true));
    ASSERT_TRUE(run.save(false));
    const auto pair = std::chrono::duration_cast<std::chrono::microseconds>(
                          std::chrono::steady_clock::now() - start)
                          .count();
    std::mt19937 rng(20021125);
    std::uniform_int_distribution<long> delay(0, pair + pair / 4);

    int sawOlder = 0;
    int sawNewer = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            for (bool next = true;; next = !next) {
                if (!run.save(next)) {
                    ::_exit(3);
                }
            }
        }
        ::usleep(static_cast<useconds_t>(delay(rng)));
        ::kill(pid, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed in the child, status " << status;

        const Bytes now = readBytes(file);
        const bool isOlder = now == older;
        const bool isNewer = now == newer;
        ASSERT_TRUE(isOlder || isNewer) << "kill " << kill << " left " << now.size() << " bytes";
        sawOlder += isOlder ? 1 : 0;
        sawNewer += isNewer ? 1 : 0;
        ASSERT_TRUE(run.opens()) << "kill " << kill;
    }
    // Both versions were seen, so the kills did land on saves in progress.
    EXPECT_GT(sawOlder, 0);
    EXPECT_GT(sawNewer, 0);

    ASSERT_TRUE(run.save(true));
    EXPECT_EQ(readBytes(file), newer);
    EXPECT_EQ(strayFiles(run.folder, {run.fileName}), std::vector<std::string>{});
}

TEST(CrashSafety, AUserFileKilledMidSaveIsTheOldOrTheNewVersion) {
    TempDir dir;
    UserVersions v = userVersions(dir.path(), 200);
    FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    killSavesAtRandom({dir.path(), "UserDB.ddb",
                       [&](bool newer) { return saveUser(newer ? *v.newer : *v.older).ok(); },
                       [&] {
                           UserStore store(clock);
                           store.dataFilePath = dir.path() / "UserDB.ddb";
                           return loadUser(store).ok() && !store.days().empty();
                       }});
}

TEST(CrashSafety, ACatalogueKilledMidSaveIsTheOldOrTheNewVersion) {
    TempDir dir;
    FoodCatalogue older;
    FoodCatalogue newer;
    fillCatalogueVersion(older, dir.path(), 5, "Old ");
    fillCatalogueVersion(newer, dir.path(), 6, "New ");
    killSavesAtRandom({dir.path(), "FoodDB.ddb",
                       [&](bool isNewer) { return saveCatalogue(isNewer ? newer : older).ok(); },
                       [&] {
                           FoodCatalogue c;
                           c.filePath = dir.path() / "FoodDB.ddb";
                           return loadCatalogue(c, dir.path() / "no template").outcome ==
                                      CatalogueLoad::Read &&
                                  c.foodCount() > 0;
                       }});
}

// A side file large enough for a save to take a while: many recipes of many ingredients.
RecipeBook recipeBookVersion(const char* prefix) {
    RecipeBook book;
    for (int r = 0; r < 100; ++r) {
        Recipe recipe;
        recipe.name = prefix + std::to_string(r);
        recipe.group = static_cast<uint8_t>(r % 8);
        recipe.servings = 4;
        for (int i = 0; i < 20; ++i) {
            recipe.ingredients.push_back(
                {static_cast<uint8_t>(i % 8), "Category " + std::to_string(i),
                 "Food " + std::to_string(i), 1.5f + static_cast<float>(i), ServingUnit::Gram});
        }
        book.push_back(std::move(recipe));
    }
    return book;
}

TEST(CrashSafety, ARecipesFileKilledMidSaveIsTheOldOrTheNewVersion) {
    TempDir dir;
    const RecipeBook older = recipeBookVersion("Old ");
    const RecipeBook newer = recipeBookVersion("New ");
    killSavesAtRandom(
        {dir.path(), "Recipes.json",
         [&](bool isNewer) { return saveRecipes(dir.path(), isNewer ? newer : older).ok(); },
         [&] {
             RecipeBook read;
             return loadRecipes(dir.path(), read).outcome == SideFileLoad::Read &&
                    read.size() == older.size();
         }});
}

}  // namespace
}  // namespace nutrovex
