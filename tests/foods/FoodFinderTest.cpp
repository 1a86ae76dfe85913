#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "core/Names.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFinder.h"

namespace nutrovex {
namespace {

FoodItem food(const std::string& name, const std::string& text2) {
    FoodItem f;
    f.name = name;
    f.text2 = text2;
    return f;
}

// One category per group holding the given foods (name = second name).
FoodCatalogue catalogueWith(const std::vector<std::vector<std::string>>& groups) {
    FoodCatalogue c;
    for (std::size_t g = 0; g < groups.size(); ++g) {
        FoodCategory cat;
        cat.name = "Category";
        for (const std::string& n : groups[g]) {
            cat.foods.push_back(food(n, n));
        }
        c.groups[g].push_back(std::move(cat));
    }
    return c;
}

std::vector<std::string> resultNames(const FoodFinder& finder) {
    std::vector<std::string> names;
    for (const FindResult& r : finder.results()) {
        names.push_back(r.item.name.str());
    }
    return names;
}

TEST(FoodFinder, MatchesAnywhereInTheSecondNameIgnoringCase) {
    FoodCatalogue c;
    c.groups[4].push_back({});
    c.groups[4][0].foods = {food("Tart", "Apple Pie"), food("Pear", "Pear"),
                            food("Cafe", "CAF\xC9 au lait")};
    FoodFinder finder;
    const struct {
        const char* text;
        std::vector<std::string> names;
    } cases[] = {
        {"app", {"Tart"}},
        {"PIE", {"Tart"}},
        {"  pie\t", {"Tart"}},
        {"E", {"Pear", "Tart"}},
        {"apple pie", {"Tart"}},
        {"Apple Pie!", {}},
        {"Tart", {}},     // the shown name is not searched
        {"caf\xE9", {}},  // only ASCII letters change case
        {"caf\xC9 AU", {"Cafe"}},
        {"pieapple", {}},
    };
    for (const auto& k : cases) {
        const auto outcome = finder.find(c, k.text);
        EXPECT_EQ(outcome,
                  k.names.empty() ? FoodFinder::Outcome::NoMatch : FoodFinder::Outcome::Found)
            << k.text;
        EXPECT_EQ(resultNames(finder), k.names) << k.text;
    }
    ASSERT_EQ(finder.find(c, "au lait"), FoodFinder::Outcome::Found);
    const FindResult& r = finder.results().at(0);
    EXPECT_EQ(std::tie(r.group, r.category, r.food), std::make_tuple(4, 0, 2));
}

TEST(FoodFinder, NamesWhereTheTextStartsAWordComeFirst) {
    FoodCatalogue c =
        catalogueWith({{"Goat", "Oatmeal", "Boat cake"}, {"Rolled oats", "Coated-oat bar"}});
    FoodFinder finder;
    const struct {
        const char* text;
        std::vector<std::string> names;
    } cases[] = {
        // "Coated-oat bar" starts a word after the hyphen, though it also holds "oat" inside one.
        {"oat", {"Coated-oat bar", "Oatmeal", "Rolled oats", "Boat cake", "Goat"}},
        {"OAT", {"Coated-oat bar", "Oatmeal", "Rolled oats", "Boat cake", "Goat"}},
        {"at", {"Boat cake", "Coated-oat bar", "Goat", "Oatmeal", "Rolled oats"}},
        {"cake", {"Boat cake"}},
    };
    for (const auto& k : cases) {
        ASSERT_EQ(finder.find(c, k.text), FoodFinder::Outcome::Found) << k.text;
        EXPECT_EQ(resultNames(finder), k.names) << k.text;
    }
}

TEST(FoodFinder, AWordStartFoundLateStillShowsBeforeAHundredOthers) {
    std::vector<std::string> foods;
    for (int i = 0; i < 150; ++i) {
        foods.push_back("Goat " + std::to_string(100 + i));
    }
    foods.push_back("Oatmeal");
    FoodCatalogue c = catalogueWith({foods});
    FoodFinder finder;
    ASSERT_EQ(finder.find(c, "oat"), FoodFinder::Outcome::Found);
    const std::vector<std::string> names = resultNames(finder);
    ASSERT_EQ(names.size(), 100u);
    EXPECT_EQ(names.front(), "Oatmeal");
    EXPECT_EQ(names[1], "Goat 100");
    EXPECT_EQ(names.back(), "Goat 198");
}

TEST(FoodFinder, BlankTextDoesNothing) {
    FoodCatalogue c = catalogueWith({{"Apple"}});
    FoodFinder finder;
    ASSERT_EQ(finder.find(c, "apple"), FoodFinder::Outcome::Found);
    EXPECT_EQ(finder.find(c, " \t "), FoodFinder::Outcome::NothingToFind);
    EXPECT_EQ(finder.find(c, ""), FoodFinder::Outcome::NothingToFind);
    EXPECT_EQ(finder.history().size(), 1u);
    EXPECT_EQ(finder.results().size(), 1u);  // the last results stay
}

TEST(FoodFinder, KeepsTheFirstHundredFoundInNameOrderWithoutDuplicates) {
    // 150 matches over two groups, in reverse name order within the catalogue.
    std::vector<std::string> g0, g1;
    for (int i = 149; i >= 75; --i) {
        g0.push_back("Pie " + std::to_string(100 + i));
    }
    for (int i = 74; i >= 0; --i) {
        g1.push_back("Pie " + std::to_string(100 + i));
    }
    g0.insert(g0.begin() + 3, "Pie 248");  // byte-equal to one already found: skipped
    g0.insert(g0.begin() + 4, "pie 248");  // differs in case: kept
    FoodCatalogue c = catalogueWith({g0, g1});
    FoodFinder finder;
    ASSERT_EQ(finder.find(c, "pie"), FoodFinder::Outcome::Found);
    const std::vector<std::string> names = resultNames(finder);
    ASSERT_EQ(names.size(), 100u);
    // All 76 of group 0 are found first, then the first 24 of group 1 (Pie 174 down to Pie 151).
    EXPECT_EQ(names.front(), "Pie 151");
    EXPECT_EQ(names[97], "pie 248");
    EXPECT_EQ(names.back(), "Pie 249");
    for (std::size_t i = 1; i < names.size(); ++i) {
        EXPECT_LT(compareNames(names[i - 1], names[i]), 0) << names[i];
    }
}

TEST(FoodFinder, SkipsGroupsLeftOutOfTheSearch) {
    FoodCatalogue c = catalogueWith({{"Apple cake"}, {}, {}, {}, {"Apple"}, {}, {}, {"Apple pie"}});
    FoodFinder finder;
    finder.includeInSearch[4] = false;
    ASSERT_EQ(finder.find(c, "apple"), FoodFinder::Outcome::Found);
    EXPECT_EQ(resultNames(finder), (std::vector<std::string>{"Apple cake", "Apple pie"}));
    finder.includeInSearch.fill(false);
    EXPECT_EQ(finder.find(c, "apple"), FoodFinder::Outcome::NoMatch);
}

TEST(FoodFinder, FollowsCatalogueChangesWithoutBeingTold) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 3, "Greens"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 3, 0, food("Kale", "Kale")), kNoPosition);
    FoodFinder finder;
    ASSERT_EQ(finder.find(c, "kale"), FoodFinder::Outcome::Found);
    ASSERT_NE(renameFoodItem(c, 3, 0, 0, "Spinach"), kNoPosition);
    EXPECT_EQ(finder.find(c, "kale"), FoodFinder::Outcome::NoMatch);
    ASSERT_NE(addFoodItem(c, 3, 0, food("Chard", "Swiss chard")), kNoPosition);
    ASSERT_EQ(finder.find(c, "SWISS"), FoodFinder::Outcome::Found);
    EXPECT_EQ(finder.results()[0].food, 0);  // Chard stands before Spinach
    c.reset();
    EXPECT_EQ(finder.find(c, "spinach"), FoodFinder::Outcome::NoMatch);
}

TEST(FoodFinder, HistoryHoldsTheTenNewestOfTwentyCharactersAtMost) {
    FoodCatalogue c;
    FoodFinder finder;
    for (int i = 0; i < 12; ++i) {
        (void)finder.find(c, "text " + std::to_string(i));
    }
    (void)finder.find(c, "  a find text of thirty chars ");
    ASSERT_EQ(finder.history().size(), 10u);
    EXPECT_EQ(finder.history()[0], "a find text of thirt");
    EXPECT_EQ(finder.history()[1], "text 11");
    EXPECT_EQ(finder.history()[9], "text 3");
}

// The block scan against the plain lower-case-and-strstr search, over names of every length
// next to each other and at the very end of the index.
TEST(FoodFinder, IndexScanAgreesWithAPlainSearch) {
    std::mt19937 rng(12345);
    std::uniform_int_distribution<int> letter(0, 3);
    std::uniform_int_distribution<int> length(0, 40);
    FoodCatalogue c;
    for (auto& group : c.groups) {
        group.resize(3);
        for (FoodCategory& cat : group) {
            cat.foods.resize(std::uniform_int_distribution<std::size_t>(0, 30)(rng));
            for (FoodItem& f : cat.foods) {
                std::string n(static_cast<std::size_t>(length(rng)), 'a');
                for (char& ch : n) {
                    ch = "aBbC"[letter(rng)];
                }
                f.text2 = n;
            }
        }
    }
    FoodSearchIndex index;
    index.build(c);
    std::array<bool, kFoodGroupCount> all{};
    all.fill(true);
    for (int trial = 0; trial < 400; ++trial) {
        std::string needle(static_cast<std::size_t>(1 + trial % 7), 'a');
        for (char& ch : needle) {
            ch = "abc"[letter(rng) % 3];
        }
        std::vector<std::tuple<int, int, int>> expected, found;
        for (int g = 0; g < kFoodGroupCount; ++g) {
            for (int k = 0; k < 3; ++k) {
                const FoodList& foods = c.groups[g][k].foods;
                for (std::size_t i = 0; i < foods.size(); ++i) {
                    std::string lower = foods[i].text2.str();
                    for (char& ch : lower) {
                        ch = asciiLower(ch);
                    }
                    if (std::strstr(lower.c_str(), needle.c_str())) {
                        expected.emplace_back(g, k, static_cast<int>(i));
                    }
                }
            }
        }
        index.forEachMatch(needle, all, [&](const FoodSearchIndex::Place& p) {
            found.emplace_back(p.group, p.category, p.food);
            return true;
        });
        ASSERT_EQ(found, expected) << needle;
    }
}

}  // namespace
}  // namespace nutrovex
