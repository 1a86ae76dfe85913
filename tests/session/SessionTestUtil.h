#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"

namespace nutrovex::test {

inline std::vector<uint8_t> fileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

// The names of the files in a folder, sorted.
inline std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A data root started by a session, with a shipped catalogue of one bagel.
class SessionRoot : public ::testing::Test {
protected:
    SessionRoot() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        FoodCatalogue c;
        FoodCategory bagels;
        bagels.name = "Bagels";
        FoodItem bagel;
        bagel.name = "Bagel";
        bagel.text2 = "Bagel";
        bagel.setReference({1, ServingUnit::Item, 0});
        bagel.setServing({1, ServingUnit::Item, 0});
        bagel.setNutrient(kCalories, 245);
        bagels.foods.push_back(bagel);
        c.groups[5].push_back(bagels);
        c.renumberGroupChunks();
        ByteBuffer out;
        EXPECT_TRUE(writeCatalogueFile(c, out).ok());
        shipped.assign(out.data(), out.data() + out.size());
    }

    std::unique_ptr<Session> started() {
        auto s = std::make_unique<Session>(root, clock, settings, shipped);
        std::string reason;
        EXPECT_EQ(s->start(reason), Session::Start::Running) << reason;
        return s;
    }

    std::filesystem::path userFolder(const char* name) const { return root / "Users" / name; }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped;
    TempDir dir;
    std::filesystem::path root = dir.path() / "root";
};

}  // namespace nutrovex::test
