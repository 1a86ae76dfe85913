#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "core/FoodItem.h"
#include "core/PackedKey.h"
#include "core/Text.h"

namespace nutrovex {

using CategoryList = std::vector<FoodCategory>;

// The group names as the catalogue file stores them (the screens show kFoodGroupNames).
extern const char* const kStoredGroupNames[kFoodGroupCount];

inline constexpr std::size_t kFixedTextSize = 21;
inline constexpr std::size_t kFixedTextCount = 10;

struct CatalogueHeader {
    uint16_t version = 4;
    std::array<Text, kFoodGroupCount> groupNames;
    // The chunk number of each group's category list: 1 + g + the categories of groups before g.
    std::array<uint16_t, kFoodGroupCount> groupChunks{};
    uint8_t byte = 0;
    std::array<std::array<uint8_t, kFixedTextSize>, kFixedTextCount> texts{};
    PackedKey keyCounter;  // the last key issued to a catalogue food or category
};

// A user's food catalogue: eight groups of categories of foods.
class FoodCatalogue {
public:
    FoodCatalogue() { reset(); }

    CatalogueHeader header;
    std::array<CategoryList, kFoodGroupCount> groups;
    std::filesystem::path filePath;
    std::filesystem::path folderPath;
    bool modified = false;
    // Changes with every edit and reset and is never reused within a run, so whatever was built
    // from one revision (the search index) knows whether it still matches.
    uint64_t revision = 0;

    // Gives the catalogue a new revision after an edit, so whatever was built from the old one
    // knows it is stale. Marking it modified (to be saved) is the session's alone.
    void newRevision();

    // Empty groups and the default header.
    void reset();
    // The chunk numbers that the groups' current sizes call for.
    [[nodiscard]] std::array<uint16_t, kFoodGroupCount> expectedGroupChunks() const;
    // Sets the header's chunk numbers from the groups' sizes, so the next save succeeds.
    void renumberGroupChunks() { header.groupChunks = expectedGroupChunks(); }
    [[nodiscard]] std::size_t foodCount() const;
};

}  // namespace nutrovex
