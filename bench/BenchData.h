// The largest data the files allow, made once per run in a scratch folder, and the references
// every figure is measured beside.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>

#include "core/FoodCatalogue.h"
#include "core/UserStore.h"
#include "storage/FileIo.h"

namespace nutrovex::bench {

using Clock = std::chrono::steady_clock;

inline constexpr int kGroups = 8;
inline constexpr int kCategories = 250;
inline constexpr int kFoods = 100;
inline constexpr int kDays = 7300;
inline constexpr int kFoodsPerDay = 20;
inline constexpr int kExercisesPerDay = 2;

// $NUTROVEX_BENCH_DIR (else the temporary folder); removed when the run ends.
const std::filesystem::path& benchFolder();

FoodItem makeFood(uint32_t serial, int group);
// 8 groups of `categories` categories of 100 foods each; 250 makes the largest catalogue.
void fillCatalogue(FoodCatalogue& c, int categories);
void fillLargestCatalogue(FoodCatalogue& c);
// `days` consecutive days from 1 January 2000, 20 foods and 2 exercises each.
void fillLogbook(UserStore& store, int days = kDays);

// FoodDB.ddb of 8 x 250 x 100 foods and UserDB.ddb of twenty years, written on first use.
const std::filesystem::path& catalogueFile();
const std::filesystem::path& logbookFile();

// The reference for loads: read() of the whole file into fresh pages from the system.
double rawReadSeconds(const std::filesystem::path& path);
// The reference for saves: write the same bytes to a new file and fsync it.
double writeAndSyncSeconds(const std::filesystem::path& path, const ByteBuffer& bytes);

ByteBuffer fileBytes(const std::filesystem::path& path);
long residentBytes();

inline double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Sets the counters ms, <what>_ms and ratio from totals over every iteration.
void reportRatio(benchmark::State& state, double measured, double reference, const char* what);

}  // namespace nutrovex::bench
