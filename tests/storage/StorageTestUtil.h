#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"

namespace nutrovex::test {

using Bytes = std::vector<uint8_t>;

inline Bytes readBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

inline float floatFromBits(uint32_t bits) {
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

inline uint32_t bitsOf(float f) {
    uint32_t bits;
    std::memcpy(&bits, &f, sizeof bits);
    return bits;
}

// A logged food whose every field differs from its default and from its neighbours'.
inline FoodItem sampleFood(uint32_t seed, const char* name = "Bagel") {
    FoodItem f;
    f.key.value = 0x80000000u | (seed * 7919u);
    f.loggedFlag = static_cast<uint8_t>(seed % 2);
    f.name = name;
    f.text2 = seed % 3 == 0 ? Text::null() : Text("t2-" + std::to_string(seed));
    f.serving = {1.5f + static_cast<float>(seed), unitFromByte(static_cast<uint8_t>(seed % 15)), 3};
    f.ref1 = {100.0f, ServingUnit::Ounce, 1};
    f.ref2 = {0.25f, ServingUnit::Item, 2};
    f.nutrients = {245.0f + static_cast<float>(seed), 48.5f, 2.25f, 10.0f, 1.5f, 0.2f};
    f.meal = static_cast<uint16_t>(seed % 4);
    f.ratio = 0.75f;
    f.group = static_cast<uint16_t>(seed % 8);
    return f;
}

inline ExerciseEntry sampleExercise(uint32_t seed) {
    ExerciseEntry e;
    e.key.value = 0x00040000u + seed;
    e.byte = static_cast<uint8_t>(seed);
    e.type = static_cast<uint16_t>(15 + seed);
    e.variant = seed % 2 == 0 ? int16_t{-1} : int16_t{3};
    e.third = 2;
    e.name = seed % 2 == 0 ? Text("Running") : Text("");
    e.minutes = static_cast<uint16_t>(30 + seed);
    e.calories = static_cast<uint16_t>(360 + seed);
    return e;
}

inline std::unique_ptr<DayRecord> sampleDay(int day, int month, int year, uint32_t foods = 3) {
    auto d = std::make_unique<DayRecord>(CalendarDate::fromDmy(day, month, year));
    DayFields& f = d->rawFields();
    f.weight = 154.5f;
    f.note = "Felt fine";
    f.word = 6;
    f.level = 2;
    f.bmr = 1700;
    f.flags = 0x9000;
    for (uint32_t i = 0; i < foods; ++i) {
        FoodItem food = sampleFood(i + static_cast<uint32_t>(day));
        f.groups[food.group].push_back(food);
    }
    f.exercises.push_back(sampleExercise(static_cast<uint32_t>(day)));
    return d;
}

// A catalogue with the given categories per group, each with `foods` foods, chunk numbers kept.
inline void fillCatalogue(FoodCatalogue& c, const std::vector<int>& categoriesPerGroup, int foods) {
    uint32_t key = 1;
    for (std::size_t g = 0; g < categoriesPerGroup.size() && g < kFoodGroupCount; ++g) {
        for (int k = 0; k < categoriesPerGroup[g]; ++k) {
            FoodCategory cat;
            cat.key.value = key++;
            cat.byte = static_cast<uint8_t>(k);
            cat.name = "Category " + std::to_string(g) + "-" + std::to_string(k);
            for (int i = 0; i < foods; ++i) {
                FoodItem f = sampleFood(key++);
                f.name = "Food " + std::to_string(i);
                f.loggedFlag = 0;
                f.group = static_cast<uint16_t>(g);
                cat.foods.push_back(f);
            }
            c.groups[g].push_back(std::move(cat));
        }
    }
    c.renumberGroupChunks();
}

}  // namespace nutrovex::test
