#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "foods/FoodCsv.h"
#include "session/Session.h"
#include "tool/FoodCommands.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

class ImportFoodsTest : public ::testing::Test {
protected:
    ImportFoodsTest() : clock(CalendarDate::fromDmy(5, 5, 2002)) {
        std::random_device rd;
        root = fs::temp_directory_path() / ("nutrovex-import-" + std::to_string(rd()));
        Session session(root, clock, settings, {});
        std::string reason;
        EXPECT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();
        EXPECT_TRUE(session.userOpen());
    }
    ~ImportFoodsTest() override {
        std::error_code ec;
        fs::remove_all(root, ec);
    }

    int import(const std::string& csv) {
        const fs::path file = root / "foods.csv";
        std::ofstream(file, std::ios::binary) << csv;
        out.str("");
        err.str("");
        GlobalOptions options;
        options.root = root.string();
        const std::vector<std::string> args = {"--user", "Zerbu", file.string()};
        return importFoods(options, args, out, err);
    }

    FixedClock clock;
    MemorySettings settings;
    fs::path root;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(ImportFoodsTest, EveryRowIsAddedOrReportedAndTheSummaryCountsBoth) {
    const std::string header = std::string(kFoodCsvHeader) + ",brand\n";
    EXPECT_EQ(import(header + "Fruits,Apples,Fuji,1,item,95,25,4,0.5,0.3,0,Acme\n"
                              "Fruits,Apples,\"Broken,1,item,95,25,4,0.5,0.3,0,Acme\n"),
              kExitDataError);
    EXPECT_EQ(out.str(), "added 1 food item and 1 category; refused 1 row\n");
    const std::string csvPath = (root / "foods.csv").string();
    EXPECT_EQ(err.str(),
              csvPath + ":1: note: the column 'brand' is not a food column and is ignored\n" +
                  csvPath + ":3: the quote that opens column 3 is not closed on its line\n");

    EXPECT_EQ(import(header + "Meat,Fish,Cod,100,g,82,0,0,18,0.7,0.1,\n"
                              "Meat,Fish,Tuna,100,g,132,0,0,28,1,0.3,\n"),
              kExitOk);
    EXPECT_EQ(out.str(), "added 2 food items and 1 category; refused 0 rows\n");

    // A file without the columns changes nothing and says which are missing.
    EXPECT_EQ(import("group,category,name\nMeat,Fish,Hake\n"), kExitDataError);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find(":1: the header has no columns 'amount', 'unit', 'calories'"),
              std::string::npos)
        << err.str();
}

// While the program has the root open, an import would be lost at its next save: it is refused
// and writes nothing, and an export, which only reads, still runs.
TEST_F(ImportFoodsTest, ImportWaitsForTheProgramToCloseTheRootAndExportDoesNot) {
    const std::string header = std::string(kFoodCsvHeader) + "\n";
    ASSERT_EQ(import(header + "Meat,Fish,Tuna,100,g,132,0,0,28,1,0.3\n"), kExitOk) << err.str();
    GlobalOptions options;
    options.root = root.string();
    const std::vector<std::string> user = {"--user", "Zerbu"};
    {
        InstanceLock program;
        std::string reason;
        ASSERT_EQ(program.acquire(root, reason), InstanceLock::Result::Acquired) << reason;
        EXPECT_EQ(import(header + "Meat,Fish,Cod,100,g,82,0,0,18,0.7,0.1\n"), kExitDataError);
        EXPECT_EQ(out.str(), "");
        EXPECT_EQ(err.str(), "nutrovex-tool import-foods: " + root.string() +
                                 ": Nutrovex has this data root open; close it first\n");

        std::ostringstream csv;
        EXPECT_EQ(exportFoods(options, user, csv, err), kExitOk);
        EXPECT_NE(csv.str().find("Tuna"), std::string::npos);
        EXPECT_EQ(csv.str().find("Cod"), std::string::npos);
    }
    EXPECT_EQ(import(header + "Meat,Fish,Cod,100,g,82,0,0,18,0.7,0.1\n"), kExitOk) << err.str();
}

}  // namespace
}  // namespace nutrovex::tool
