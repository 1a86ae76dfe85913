#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "calc/Bmr.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "session/Session.h"
#include "storage/UserStorage.h"
#include "tool/LogCommands.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

class ExportLogTest : public ::testing::Test {
protected:
    ExportLogTest() : clock(CalendarDate::fromDmy(5, 5, 2002)) {
        Session session(root, clock, settings, {});
        std::string reason;
        EXPECT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();  // no template catalogue here: only the days matter
        EXPECT_TRUE(session.userOpen());
        DayCursor& days = session.days();
        for (int d : {3, 4, 5}) {
            days.setCurrentDate(CalendarDate::fromDmy(d, 5, 2002));
            (void)days.ensureCurrentDay();
        }
        days.setCurrentDate(CalendarDate::fromDmy(3, 5, 2002));
        DayRecord& day = *days.currentRecord();
        setDayWeight(day, 154.5f, session.store().profile);
        day.setWater(4);
        day.setNote("Ran, \"far\"\r\ncaf\xE9");
        FoodItem food;
        food.nutrients = {250.0f, 30.5f, 2.0f, 10.0f, 8.0f, 3.0f};
        food.ratio = 2.0f;
        day.group(5).push_back(food);
        ExerciseEntry run;
        run.minutes = 30;
        run.calories = 360;
        (void)day.appendExercise(run);
        EXPECT_TRUE(session.saveUserData().ok());
        settings.setCurrentUserName("");
    }
    int run(std::vector<std::string> args) {
        out.str("");
        err.str("");
        GlobalOptions options;
        options.root = root.string();
        return exportLog(options, args, out, err);
    }

    FixedClock clock;
    MemorySettings settings;
    test::TempDir dir;
    fs::path root = dir.path() / "root";
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(ExportLogTest, OneRowPerDayWithinTheDates) {
    ASSERT_EQ(run({"--user", "Zerbu"}), kExitOk) << err.str();
    const std::string header = logCsvHeader();
    EXPECT_EQ(
        out.str(),
        header +
            "5/3/2002,154.5,2,0,500,61,4,20,16,6,360,30,4,\"Ran, \"\"far\"\"\r\ncaf\xC3\xA9\"\n"
            "5/4/2002,,0,0,0,0,0,0,0,0,0,0,0,\n"
            "5/5/2002,,0,0,0,0,0,0,0,0,0,0,0,\n");

    ASSERT_EQ(run({"--user", "Zerbu", "--from", "5/4/2002"}), kExitOk);
    EXPECT_EQ(out.str(), header +
                             "5/4/2002,,0,0,0,0,0,0,0,0,0,0,0,\n"
                             "5/5/2002,,0,0,0,0,0,0,0,0,0,0,0,\n");
    ASSERT_EQ(run({"--user", "Zerbu", "--from", "5/4/2002", "--to", "5/4/2002"}), kExitOk);
    EXPECT_EQ(out.str(), header + "5/4/2002,,0,0,0,0,0,0,0,0,0,0,0,\n");
    ASSERT_EQ(run({"--user", "Zerbu", "--to", "1/1/2002"}), kExitOk);
    EXPECT_EQ(out.str(), header);
}

TEST_F(ExportLogTest, WritesTheCsvFile) {
    const fs::path csv = root / "log.csv";
    ASSERT_EQ(run({"--csv", csv.string(), "--user", "Zerbu", "--from", "5/5/2002"}), kExitOk);
    EXPECT_TRUE(out.str().empty());
    std::ifstream in(csv, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_EQ(text, logCsvHeader() + "5/5/2002,,0,0,0,0,0,0,0,0,0,0,0,\n");

    EXPECT_EQ(run({"--user", "Zerbu", "--csv", (root / "no" / "such" / "x.csv").string()}),
              kExitDataError);
    EXPECT_NE(err.str().find("x.csv"), std::string::npos) << err.str();
}

TEST_F(ExportLogTest, SummarisesTheMeasuredMaintenanceWhenThereIsOne) {
    {  // Four weeks of 2000 calories a day to 21 November 2002, the trend going 200 -> 198.
        UserStore store(clock);
        store.userFolderPath = root / "Users" / "Zerbu";
        store.dataFilePath = store.userFolderPath / "UserDB.ddb";
        ASSERT_TRUE(loadUser(store).ok());
        store.dayAt(0).rawFields().weight = -1.0f;  // the trend starts in the weeks below
        for (int i = 0; i <= 28; ++i) {
            auto day =
                std::make_unique<DayRecord>(steppedDate(CalendarDate::fromDmy(21, 11, 2002), -i));
            if (i < 28) {
                FoodItem food;
                food.nutrients[kCalories] = 2000.0f;
                food.ratio = 1.0f;
                day->group(2).push_back(food);
            }
            day->rawFields().weight = i == 0 ? 180.0f : (i == 28 || i == 10 ? 200.0f : -1.0f);
            ASSERT_NE(store.insertDay(std::move(day)), kNoPosition);
        }
        ASSERT_TRUE(saveUser(store).ok());
    }
    const std::string summary =
        "measured maintenance: 2,250 cal a day over the 28 days to 11/21/2002 (28 days logged, 2 "
        "weigh-ins, trend -0.5 lbs/week)\n";
    GlobalOptions options;
    options.root = root.string();
    const FixedClock then(CalendarDate::fromDmy(21, 11, 2002));
    const std::vector<std::string> args = {"--user", "Zerbu"};
    ASSERT_EQ(exportLog(options, args, out, err, then), kExitOk) << err.str();
    EXPECT_EQ(err.str(), summary);  // beside the CSV on standard output, never in it
    EXPECT_EQ(out.str().find("maintenance"), std::string::npos);

    // The window ends at --to; a later day of the logbook does not move it.
    ASSERT_EQ(run({"--user", "Zerbu", "--to", "11/21/2002"}), kExitOk);
    EXPECT_EQ(err.str(), summary);
    ASSERT_EQ(run({"--user", "Zerbu", "--to", "11/20/2002"}), kExitOk);
    EXPECT_EQ(err.str().find("2,250 cal"), std::string::npos);
    EXPECT_NE(err.str().find("measured maintenance"), std::string::npos);

    const fs::path csv = root / "log.csv";
    ASSERT_EQ(run({"--user", "Zerbu", "--to", "11/21/2002", "--csv", csv.string()}), kExitOk);
    EXPECT_EQ(out.str(), summary);
    // Without enough days there is no line at all.
    ASSERT_EQ(run({"--user", "Zerbu", "--to", "11/6/2002", "--csv", csv.string()}), kExitOk);
    EXPECT_EQ(out.str(), "");
}

TEST_F(ExportLogTest, WrongUsageExitsWithTwo) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"--user"},
        {"--user", "Zerbu", "--from", "2/30/2002"},
        {"--user", "Zerbu", "--to", "2002-05-01"},
        {"--user", "Zerbu", "--to", "5/1/1850"},
        {"--user", "Zerbu", "--verbose", "1"},
    };
    for (const auto& args : cases) {
        EXPECT_EQ(run(args), kExitUsage) << testing::PrintToString(args);
        EXPECT_NE(err.str().find("usage: nutrovex-tool"), std::string::npos);
    }
}

TEST_F(ExportLogTest, DataProblemsExitWithOneAndNameTheFile) {
    EXPECT_EQ(run({"--user", "Nobody"}), kExitDataError);
    EXPECT_NE(err.str().find("Nobody"), std::string::npos);

    std::ofstream(root / "Users" / "Zerbu" / "UserDB.ddb", std::ios::binary) << "garbage";
    EXPECT_EQ(run({"--user", "Zerbu"}), kExitDataError);
    EXPECT_NE(err.str().find("UserDB.ddb"), std::string::npos) << err.str();
    EXPECT_TRUE(out.str().empty());

    fs::remove_all(root / "Users");
    EXPECT_EQ(run({"--user", "Zerbu"}), kExitDataError);
    EXPECT_FALSE(fs::exists(root / "Users"));  // exporting writes nothing
}

TEST(LogDates, OnlyRealDaysOfThePackableYears) {
    struct Row {
        const char* text;
        bool valid;
    };
    const Row rows[] = {
        {"5/3/2002", true},   {"02/29/2004", true}, {"2/29/2003", false}, {"12/31/2031", true},
        {"1/1/2032", false},  {"0/1/2002", false},  {"5/3", false},       {"5/3/2002/1", false},
        {"-5/3/2002", false}, {"5/ 3/2002", false}, {"", false},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(parseLogDate(r.text).has_value(), r.valid) << r.text;
    }
    const CalendarDate d = *parseLogDate("02/29/2004");
    EXPECT_EQ(d.month, 2);
    EXPECT_EQ(d.day, 29);
    EXPECT_EQ(d.year, 2004);
}

}  // namespace
}  // namespace nutrovex::tool
