#include "core/FoodCatalogue.h"

namespace nutrovex {

const char* const kStoredGroupNames[kFoodGroupCount] = {
    "Sweets, Fats, Oils", "Milk, Yogurt, Cheese", "Meat, Poultry, Fish", "Vegetables",
    "Fruit, Fruit Juice", "Bread, Cereal, Pasta", "Drinks, Beer, Soda",  "Restaurants, Other"};

void FoodCatalogue::reset() {
    header = CatalogueHeader{};
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
