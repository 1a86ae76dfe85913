#include "core/FoodCatalogue.h"

#include <atomic>

namespace nutrovex {

const char* const kStoredGroupNames[kFoodGroupCount] = {
    "Sweets, Fats, Oils", "Milk, Yogurt, Cheese", "Meat, Poultry, Fish", "Vegetables",
    "Fruit, Fruit Juice", "Bread, Cereal, Pasta", "Drinks, Beer, Soda",  "Restaurants, Other"};

namespace {

uint64_t nextRevision() {
    static std::atomic<uint64_t> counter{0};
    return ++counter;
}

}  // namespace

void FoodCatalogue::newRevision() {
    revision = nextRevision();
}

void FoodCatalogue::reset() {
    header = CatalogueHeader{};
    revision = nextRevision();
    for (std::size_t g = 0; g < groups.size(); ++g) {
        groups[g].clear();
        header.groupNames[g] = kStoredGroupNames[g];
    }
    renumberGroupChunks();
}

std::array<uint16_t, kFoodGroupCount> FoodCatalogue::expectedGroupChunks() const {
    std::array<uint16_t, kFoodGroupCount> chunks{};
    uint32_t next = 1;
    for (std::size_t g = 0; g < groups.size(); ++g) {
        chunks[g] = static_cast<uint16_t>(next);
        next += 1 + static_cast<uint32_t>(groups[g].size());
    }
    return chunks;
}

std::size_t FoodCatalogue::foodCount() const {
    std::size_t n = 0;
    for (const CategoryList& list : groups) {
        for (const FoodCategory& c : list) {
            n += c.foods.size();
        }
    }
    return n;
}

}  // namespace nutrovex
