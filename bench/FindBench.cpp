// Find over the largest catalogue the files allow (8 groups x 250 categories x 100 foods), worst
// case: nothing matches, so every name is scanned. The figure is the time per food; the target
// is 10 ns. The reference beside it lower-cases every name during the search.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <string>

#include "core/FoodCatalogue.h"
#include "core/Names.h"
#include "foods/FoodFinder.h"

namespace {

using namespace nutrovex;

const char* const kWords[] = {"Apple",   "Bagel",  "Cheese", "Chicken", "Beef",   "Pork",
                              "Salad",   "Bread",  "Rice",   "Pasta",   "Sauce",  "Soup",
                              "Cereal",  "Yogurt", "Milk",   "Juice",   "Cookie", "Cake",
                              "Pie",     "Fried",  "Baked",  "Grilled", "Whole",  "Wheat",
                              "Low fat", "Lite",   "Orange", "Banana",  "Tomato", "Potato"};

// Names of 10 to 21 characters, as real catalogues hold.
std::string randomName(std::mt19937& rng) {
    std::uniform_int_distribution<std::size_t> word(0, std::size(kWords) - 1);
    std::string name;
    while (name.size() < 10) {
        if (!name.empty()) {
            name += ' ';
        }
        name += kWords[word(rng)];
    }
    return name.substr(0, 21);
}

const FoodCatalogue& largestCatalogue() {
    static const FoodCatalogue catalogue = [] {
        FoodCatalogue c;
        std::mt19937 rng(7);
        for (auto& group : c.groups) {
            group.resize(250);
            for (FoodCategory& category : group) {
                category.foods.resize(100);
                for (FoodItem& f : category.foods) {
                    f.name = randomName(rng);
                    f.text2 = f.name;
                }
            }
        }
        return c;
    }();
    return catalogue;
}

void perFood(benchmark::State& state, std::size_t foods) {
    state.counters["per_food"] = benchmark::Counter(
        static_cast<double>(foods),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Our find: the precomputed lower-case index, no match anywhere.
void BM_FindNoMatch(benchmark::State& state) {
    const FoodCatalogue& c = largestCatalogue();
    FoodFinder finder;
    (void)finder.find(c, "warm up");  // builds the index once
    for (auto _ : state) {
        const auto outcome = finder.find(c, "Zqx");
        benchmark::DoNotOptimize(outcome);
    }
    perFood(state, c.foodCount());
}
BENCHMARK(BM_FindNoMatch)->Unit(benchmark::kMillisecond);

// A needle whose first letter is everywhere, so every scan step stops to compare.
void BM_FindNoMatchCommonLetter(benchmark::State& state) {
    const FoodCatalogue& c = largestCatalogue();
    FoodFinder finder;
    (void)finder.find(c, "warm up");
    for (auto _ : state) {
        const auto outcome = finder.find(c, "eex");
        benchmark::DoNotOptimize(outcome);
    }
    perFood(state, c.foodCount());
}
BENCHMARK(BM_FindNoMatchCommonLetter)->Unit(benchmark::kMillisecond);

// Reference: lower-casing both strings for every food during the search, as a straightforward
// search does.
void BM_FindLowerCasingEachName(benchmark::State& state) {
    const FoodCatalogue& c = largestCatalogue();
    for (auto _ : state) {
        std::size_t hits = 0;
        std::string needle = "Zqx";
        for (char& ch : needle) {
            ch = asciiLower(ch);
        }
        for (const CategoryList& list : c.groups) {
            for (const FoodCategory& category : list) {
                for (const FoodItem& f : category.foods) {
                    std::string lower = f.text2.str();
                    for (char& ch : lower) {
                        ch = asciiLower(ch);
                    }
                    hits += std::strstr(lower.c_str(), needle.c_str()) != nullptr;
                }
            }
        }
        benchmark::DoNotOptimize(hits);
    }
    perFood(state, c.foodCount());
}
BENCHMARK(BM_FindLowerCasingEachName)->Unit(benchmark::kMillisecond);

// Building the index after the catalogue changed: paid once per change, not per search.
void BM_FindIndexBuild(benchmark::State& state) {
    const FoodCatalogue& c = largestCatalogue();
    for (auto _ : state) {
        FoodSearchIndex index;
        index.build(c);
        benchmark::DoNotOptimize(index.size());
    }
    perFood(state, c.foodCount());
}
BENCHMARK(BM_FindIndexBuild)->Unit(benchmark::kMillisecond);

}  // namespace
