#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "render/ChartPainter.h"
#include "session/Session.h"
#include "tool/ChartCommand.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

std::vector<char> bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A data root with "Zerbu" weighed in on the given days of May 2002, saved.
class ChartCommand : public ::testing::Test {
protected:
    void makeUser(const std::vector<std::pair<int, float>>& weighIns) {
        const FixedClock clock(CalendarDate::fromDmy(21, 11, 2002));
        MemorySettings settings;
        Session session(dir.path(), clock, settings, {});
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();
        UserStore& store = session.store();
        for (const auto& [day, pounds] : weighIns) {
            const Position at =
                store.insertDay(std::make_unique<DayRecord>(CalendarDate::fromDmy(day, 5, 2002)));
            setDayWeight(store.dayAt(at), pounds, store.profile);
        }
        ASSERT_TRUE(session.saveUserData().ok());
    }

    int run(std::vector<std::string> args) {
        err.str("");
        return drawChart(GlobalOptions{dir.path().string()}, args, err);
    }

    [[nodiscard]] fs::path userFile() const {
        return dir.path() / "Users" / "Zerbu" / "UserDB.ddb";
    }

    test::TempDir dir;
    std::ostringstream err;
};

// Pixels drawn in the weight line's own colour.
int linePixels(const QImage& image) {
    const QColor line = chartColours(QGuiApplication::palette()).line;
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            n += image.pixel(x, y) == line.rgb() ? 1 : 0;
        }
    }
    return n;
}

TEST_F(ChartCommand, DrawsTheSpanAsAPngAndLeavesTheDataAlone) {
    makeUser({{2, 150.0f}, {16, 182.0f}});
    const std::vector<char> before = bytesOf(userFile());
    const fs::path png = dir.path() / "chart.png";

    ASSERT_EQ(run({"--user", "Zerbu", "--span", "1", "--png", png.string()}), kExitOk) << err.str();
    const QImage image(QString::fromStdString(png.string()));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(480, 240));
    EXPECT_GT(linePixels(image), 50);
    EXPECT_EQ(bytesOf(userFile()), before);

    // The 7-day span holds only the last weigh-in: the picture explains instead of plotting.
    ASSERT_EQ(run({"--span", "0", "--png", png.string(), "--user", "Zerbu", "--width", "800"}),
              kExitOk);
    const QImage explained(QString::fromStdString(png.string()));
    EXPECT_EQ(explained.size(), QSize(800, 400));
    EXPECT_EQ(linePixels(explained), 0);
}

TEST_F(ChartCommand, WrongUsageAndUnreadableDataSayWhy) {
    makeUser({{2, 150.0f}, {16, 152.0f}});
    const fs::path png = dir.path() / "chart.png";
    const struct {
        std::vector<std::string> args;
        int exit;
        const char* says;
    } cases[] = {
        {{"--user", "Zerbu", "--span", "1"}, kExitUsage, "--png FILE are required"},
        {{"--user", "Zerbu", "--span", "7", "--png", png.string()}, kExitUsage, "span from 0 to 6"},
        {{"--user", "Zerbu", "--span", "-1", "--png", png.string()},
         kExitUsage,
         "span from 0 to 6"},
        {{"--user", "Zerbu", "--span", "1", "--png", png.string(), "--width", "50"},
         kExitUsage,
         "width from 120"},
        {{"--user", "Zerbu", "--span"}, kExitUsage, "needs a value"},
        {{"--user", "Ann", "--span", "1", "--png", png.string()}, kExitDataError, "'Ann'"},
        {{"--user", "Zerbu", "--span", "1", "--png", (dir.path() / "no" / "chart.png").string()},
         kExitDataError,
         "chart.png"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(run(c.args), c.exit) << c.args.back();
        EXPECT_NE(err.str().find(c.says), std::string::npos) << err.str();
    }
    EXPECT_FALSE(fs::exists(png));

    // A damaged user file is reported, and no picture is made from it.
    std::ofstream(userFile(), std::ios::binary | std::ios::trunc) << "not a user file";
    EXPECT_EQ(run({"--user", "Zerbu", "--span", "1", "--png", png.string()}), kExitDataError);
    EXPECT_NE(err.str().find("UserDB.ddb"), std::string::npos) << err.str();
    EXPECT_FALSE(fs::exists(png));
}

}  // namespace
}  // namespace nutrovex::tool
