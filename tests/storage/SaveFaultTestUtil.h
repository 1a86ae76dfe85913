#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "StorageTestUtil.h"
#include "core/FoodCatalogue.h"
#include "core/UserStore.h"

namespace nutrovex::test {

// Two versions of the same person's data, as a program alternates between saves: the versions
// differ in every day's note and weigh-in, so any mix of them shows.
struct UserVersions {
    FixedClock clock{CalendarDate::fromDmy(1, 1, 2020)};
    std::unique_ptr<UserStore> older;
    std::unique_ptr<UserStore> newer;
};

inline void fillDays(UserStore& store, int days, float weight, const char* note) {
    for (int d = 0; d < days; ++d) {
        // 28-day months are all these files need.
        auto day = sampleDay(1 + d % 28, 1 + (d / 28) % 12, 2001 + d / (28 * 12), 20);
        day->rawFields().weight = weight + static_cast<float>(d % 7);
        day->rawFields().note = note;
        store.insertDay(std::move(day));
    }
}

inline UserVersions userVersions(const std::filesystem::path& folder, int days) {
    UserVersions v;
    v.older = std::make_unique<UserStore>(v.clock);
    v.newer = std::make_unique<UserStore>(v.clock);
    fillDays(*v.older, days, 150.0f, "The old version of the day");
    fillDays(*v.newer, days + 3, 160.0f, "The new one");
    for (UserStore* s : {v.older.get(), v.newer.get()}) {
        s->userFolderPath = folder;
        s->dataFilePath = folder / "UserDB.ddb";
    }
    return v;
}

inline void fillCatalogueVersion(FoodCatalogue& c, const std::filesystem::path& folder,
                                 int categories, const char* prefix) {
    fillCatalogue(c, std::vector<int>(kFoodGroupCount, categories), 100);
    for (CategoryList& group : c.groups) {
        for (FoodCategory& cat : group) {
            for (FoodItem& f : cat.foods) {
                f.name = prefix + f.name.str();
            }
        }
    }
    c.folderPath = folder;
    c.filePath = folder / "FoodDB.ddb";
}

// Names in the folder other than the expected files: left-over temporary files.
inline std::vector<std::string> strayFiles(const std::filesystem::path& folder,
                                           const std::vector<std::string>& expected) {
    std::vector<std::string> stray;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (std::find(expected.begin(), expected.end(), name) == expected.end()) {
            stray.push_back(name);
        }
    }
    return stray;
}

}  // namespace nutrovex::test
