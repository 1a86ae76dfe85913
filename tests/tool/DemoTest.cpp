#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "calc/ExerciseCalories.h"
#include "calc/Goals.h"
#include "calc/Totals.h"
#include "charts/MeasuredMaintenance.h"
#include "data/ShippedCatalogue.h"
#include "foods/FoodLogRows.h"
#include "session/Session.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/UserStorage.h"
#include "tool/DemoLogbook.h"
#include "tool/IniSettings.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

std::string fileText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The most of a unit anyone eats or drinks at once.
double mostEatenAtOnce(ServingUnit unit) {
    switch (unit) {
        case ServingUnit::Gram:
            return 400.0;
        case ServingUnit::FluidOunce:
            return 20.0;
        case ServingUnit::Cup:
            return 2.0;
        case ServingUnit::Ounce:
            return 8.0;
        case ServingUnit::Item:
        case ServingUnit::Tablespoon:
        case ServingUnit::Teaspoon:
            return 3.0;
        default:
            return 1000.0;  // millilitres
    }
}

class DemoTest : public ::testing::Test {
protected:
    DemoTest() : clock(today()) {
        std::random_device rd;
        base = fs::temp_directory_path() / ("nutrovex-demo-" + std::to_string(rd()));
        root = base / "root";
    }
    ~DemoTest() override {
        std::error_code ec;
        fs::remove_all(base, ec);
    }

    static CalendarDate today() {
        CalendarDate d = CalendarDate::fromDmy(21, 11, 2002);
        d.hour = 13;  // lunch time: the meal is set by the demo, not by the clock
        return d;
    }

    int run(const fs::path& at, std::vector<std::string> args,
            std::span<const uint8_t> shipped = shippedCatalogue()) {
        out.str("");
        err.str("");
        GlobalOptions options;
        options.root = at.string();
        return makeDemo(options, args, out, err, clock, shipped);
    }

    // The user's files as the program would read them.
    void load(const std::string& name, UserStore& store, FoodCatalogue& catalogue) {
        store.userFolderPath = userFolderPath(root, name).value();
        store.dataFilePath = store.userFolderPath / "UserDB.ddb";
        ASSERT_TRUE(loadUser(store).ok());
        catalogue.filePath = store.userFolderPath / "FoodDB.ddb";
        catalogue.folderPath = store.userFolderPath;
        ASSERT_EQ(loadCatalogue(catalogue, templateCataloguePath(root)).outcome,
                  CatalogueLoad::Read);
    }

    FixedClock clock;
    fs::path base;
    fs::path root;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(DemoTest, MakesAFourMonthLogbookThatLoadsAndAddsUp) {
    ASSERT_EQ(run(root, {}), kExitOk) << err.str();
    EXPECT_EQ(IniSessionSettings(root / "Nutrovex.ini").currentUserName(), "Demo");
    EXPECT_TRUE(fs::exists(templateCataloguePath(root)));  // installed as the program would

    UserStore store(clock);
    FoodCatalogue catalogue;
    load("Demo", store, catalogue);
    std::set<std::string> catalogueNames;
    for (const CategoryList& group : catalogue.groups) {
        for (const FoodCategory& category : group) {
            for (const FoodItem& food : category.foods) {
                catalogueNames.insert(food.name.str());
            }
        }
    }

    const UserProfile& profile = store.profile;
    EXPECT_EQ(profile.displayName(), "Demo");
    const auto perDay = planCaloriesPerDay(profile.plan());
    ASSERT_TRUE(perDay.has_value());
    EXPECT_GT(*perDay, 0);  // a weight-loss goal, so the food budget shows
    EXPECT_TRUE(computeBmr(profile, 2, 170.0f).ok);

    const DayList& days = store.days();
    ASSERT_GE(days.size(), 100u);
    EXPECT_EQ(dayNumber(days.back()->date()), dayNumber(today()));
    EXPECT_EQ(dayNumber(days.front()->date()), dayNumber(today()) - (kDemoDays - 1));
    EXPECT_TRUE(datesEqual(days.front()->date(), profile.startDate()));

    std::vector<float> weighIns;
    int exercises = 0;
    int notes = 0;
    int water = 0;
    for (std::size_t i = 0; i < days.size(); ++i) {
        DayRecord& day = *days[i];
        SCOPED_TRACE(longDateText(day.date()));
        if (i > 0) {
            EXPECT_LT(dayNumber(days[i - 1]->date()), dayNumber(day.date()));
        }
        // The stored totals are the sums of the day's foods.
        EXPECT_EQ(day.totals(), computeDayTotals(day));
        const std::size_t foods = day.allFoods().size();
        EXPECT_TRUE(foods == 0 || (foods >= 3 && foods <= 6)) << foods;
        for (const FoodItem& food : day.allFoods()) {
            EXPECT_EQ(food.loggedFlag, 1);
            EXPECT_LE(food.meal, 3);
            EXPECT_TRUE(catalogueNames.contains(food.name.str())) << food.name.str();
            // Portions as people eat them: never a plate of egg yolks or a jug of beer.
            const double most = mostEatenAtOnce(food.serving.unit);
            EXPECT_LE(food.serving.amount, most)
                << food.name.str() << " " << servingText(food.serving);
            EXPECT_LE(food.shownNutrient(kCalories), 900.0f) << food.name.str();
        }
        const std::string date = longDateText(day.date());
        const bool weekend = date.starts_with("Saturday") || date.starts_with("Sunday");
        for (const char* weekendOnly : {"Weekend", "brunch", "Hiked"}) {
            EXPECT_TRUE(weekend || day.note().find(weekendOnly) == std::string_view::npos);
        }
        for (const char* weekdayOnly : {"at work", "afternoon snack"}) {
            EXPECT_TRUE(!weekend || day.note().find(weekdayOnly) == std::string_view::npos);
        }
        if (day.weight() > 0.0f) {
            EXPECT_GE(foods, 3u);  // every day weighed in has its food logged
            weighIns.push_back(day.weight());
            EXPECT_EQ(day.level(), 2);
            EXPECT_EQ(day.bmr(), computeBmr(profile, 2, day.weight()).bmr);
        }
        for (const ExerciseEntry& e : day.exercises()) {
            ++exercises;
            const ExerciseSelection s{static_cast<int16_t>(e.type), e.variant, e.third};
            const int16_t pounds = weightToWhole(day.weight(), false).value;
            EXPECT_EQ(e.calories, computeExerciseCalories(s, pounds, e.minutes).calories);
            EXPECT_GT(e.calories, 0);
        }
        notes += day.note().empty() ? 0 : 1;
        water += day.water() > 0 ? 1 : 0;
    }
    EXPECT_GE(exercises, 10);
    EXPECT_GE(notes, 10);
    EXPECT_GE(water, 50);

    // The weight drifts towards the goal: the last fortnight's weigh-ins lie well below the
    // first's and still above the goal, which the person has not reached four months in.
    ASSERT_GE(weighIns.size(), 60u);
    const auto mean = [](auto from, auto to) {
        double sum = 0.0;
        for (auto it = from; it != to; ++it) {
            sum += *it;
        }
        return sum / static_cast<double>(to - from);
    };
    const double early = mean(weighIns.begin(), weighIns.begin() + 10);
    const double late = mean(weighIns.end() - 10, weighIns.end());
    EXPECT_GT(early - late, 6.0);
    EXPECT_LT(early - late, 25.0);
    EXPECT_GT(late, profile.goalWeight() + 2.0f);

    const Maintenance m = measureMaintenance(days, today());
    ASSERT_TRUE(m.valid) << missingForMaintenance(m);
    EXPECT_GT(m.calories, 1700.0);
    EXPECT_LT(m.calories, 2800.0);
    EXPECT_LT(*m.weeklyRate(), -0.3);
    EXPECT_GT(*m.weeklyRate(), -2.5);
    // The food budget page's measured section shows the figure and a suggestion.
    const BudgetSection measured = measuredSection(store, today());
    ASSERT_EQ(measured.rows.size(), 4u);
    EXPECT_EQ(measured.rows[0].label, "Maintenance (28 days):");
    EXPECT_EQ(measured.rows[1].label, "Suggested budget:");
    EXPECT_EQ(measured.rows[3].label, "Trend (28 days):");
    EXPECT_NE(out.str().find("made the demo user 'Demo'"), std::string::npos) << out.str();
}

TEST_F(DemoTest, TheSameDayMakesTheSameLogbook) {
    ASSERT_EQ(run(base / "a", {}), kExitOk) << err.str();
    ASSERT_EQ(run(base / "b", {}), kExitOk) << err.str();
    const std::string a = fileText(base / "a" / "Users" / "Demo" / "UserDB.ddb");
    EXPECT_FALSE(a.empty());
    EXPECT_EQ(a, fileText(base / "b" / "Users" / "Demo" / "UserDB.ddb"));
}

TEST_F(DemoTest, NeverTouchesAnExistingUser) {
    ASSERT_EQ(run(root, {}), kExitOk) << err.str();
    const fs::path file = root / "Users" / "Demo" / "UserDB.ddb";
    const std::string before = fileText(file);
    std::ofstream(root / "Nutrovex.ini", std::ios::app) << "[Charts]\nSpan=2\n";

    EXPECT_EQ(run(root, {}), kExitDataError);
    EXPECT_NE(err.str().find("already a user named 'Demo'"), std::string::npos) << err.str();
    EXPECT_EQ(fileText(file), before);

    // Another name is a new user, remembered in place of the first; other settings stay.
    ASSERT_EQ(run(root, {"--user", "Zo\xC3\xAB"}), kExitOk) << err.str();
    EXPECT_EQ(IniSessionSettings(root / "Nutrovex.ini").currentUserName(), "Zo\xEB");
    EXPECT_NE(fileText(root / "Nutrovex.ini").find("[Charts]\nSpan=2\n"), std::string::npos);
    UserStore store(clock);
    FoodCatalogue catalogue;
    load("Zo\xEB", store, catalogue);
    EXPECT_EQ(store.profile.userName(), "Zo\xEB");
    EXPECT_EQ(fileText(file), before);

    // A name that would leave the users folder is refused in words.
    for (const char* name : {"../outside", "a/b", ".."}) {
        EXPECT_EQ(run(root, {"--user", name}), kExitDataError) << name;
        EXPECT_NE(err.str().find("user name cannot"), std::string::npos) << err.str();
    }
    EXPECT_FALSE(fs::exists(root / "outside"));

    // A folder of that name left on disk is someone's data too.
    fs::create_directories(root / "Users" / "Left");
    std::ofstream(root / "Users" / "Left" / "UserDB.ddb") << "keep";
    EXPECT_EQ(run(root, {"--user", "Left"}), kExitDataError);
    EXPECT_EQ(fileText(root / "Users" / "Left" / "UserDB.ddb"), "keep");
}

TEST_F(DemoTest, RefusesARootTheProgramHasOpenOrThatHasNoFoods) {
    {
        MemorySettings settings;
        Session program(root, clock, settings, shippedCatalogue());
        std::string reason;
        ASSERT_EQ(program.start(reason), Session::Start::Running) << reason;
        EXPECT_EQ(run(root, {}), kExitDataError);
        EXPECT_NE(err.str().find("open"), std::string::npos) << err.str();
        EXPECT_FALSE(fs::exists(root / "Users" / "Demo"));
    }
    // Without a starting catalogue there is nothing to log.
    EXPECT_EQ(run(base / "empty", {}, {}), kExitDataError);
    EXPECT_NE(err.str().find("no foods"), std::string::npos) << err.str();
    EXPECT_FALSE(fs::exists(base / "empty" / "Users"));
}

TEST_F(DemoTest, WrongUsageExitsWithTwo) {
    const std::vector<std::vector<std::string>> cases = {
        {"--user"}, {"--name", "x"}, {"--user", "a", "b"}, {"extra"}};
    for (const auto& args : cases) {
        EXPECT_EQ(run(root, args), kExitUsage) << testing::PrintToString(args);
        EXPECT_NE(err.str().find("usage: nutrovex-tool"), std::string::npos);
    }
    EXPECT_FALSE(fs::exists(root));
}

}  // namespace
}  // namespace nutrovex::tool
