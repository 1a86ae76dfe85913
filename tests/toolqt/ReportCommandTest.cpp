// nutrovex-tool report, run as the real program on the demo user: the PDF's text (pdftotext) must
// say what export-log and the eval ops say about the same days.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

struct Ran {
    int code = -1;
    std::string out;
};

std::string quoted(const std::string& s) {
    std::string q = "'";
    for (const char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

// Runs a shell command line; standard error joins standard output.
Ran shell(const std::string& command) {
    Ran run;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return run;
    }
    char buffer[4096];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
        run.out.append(buffer, n);
    }
    const int status = ::pclose(pipe);
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

std::string slurp(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> split(const std::string& text, char by) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, by)) {
        parts.push_back(part);
    }
    return parts;
}

std::vector<std::string> words(const std::string& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// As the report prints figures: printf's rounding, thousands grouped.
std::string grouped(double value, int decimals) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    std::string text = buffer;
    const std::size_t begin = text[0] == '-' ? 1 : 0;
    std::size_t end = text.find('.');
    end = end == std::string::npos ? text.size() : end;
    for (std::size_t at = end; at > begin + 3; at -= 3) {
        text.insert(at - 3, 1, ',');
    }
    return text;
}

// One row of export-log's CSV.
struct LogRow {
    std::string date;  // M/D/YYYY
    std::string weight;
    int level = 0;
    int bmr = 0;
    std::array<double, 6> totals{};
    long exercise = 0;
};

// The demo user with targets, its log, its dump and the report of its days (and one day before
// them, which has no entry), made once for every test.
class ReportCommand : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        dir = new test::TempDir;
        const std::string root = (dir->path() / "root").string();
        ASSERT_EQ(tool("demo").code, 0);
        // A percentage of the budget, a fibre floor and a saturated-fat limit.
        std::ofstream(dir->path() / "root" / "Users" / "Demo" / "Targets.json")
            << R"({"version": 1, "protein": {"percent": 25}, "fiber": {"grams": 25}, )"
               R"("saturatedFat": {"grams": 20}})";
        const fs::path csv = dir->path() / "log.csv";
        const Ran log = tool("export-log --user Demo --csv " + quoted(csv.string()));
        ASSERT_EQ(log.code, 0) << log.out;
        summary = new std::string(log.out);
        rows = new std::vector<LogRow>;
        for (const std::string& line : split(slurp(csv), '\n')) {
            const std::vector<std::string> f = split(line, ',');
            if (f.size() < 12 || f[0] == "date") {
                continue;
            }
            LogRow r{f[0], f[1], std::stoi(f[2]), std::stoi(f[3]), {}, std::stol(f[10])};
            for (int n = 0; n < 6; ++n) {
                // The shortest text of a float: read back as that float, not as the decimal.
                r.totals[static_cast<std::size_t>(n)] =
                    static_cast<double>(std::stof(f[static_cast<std::size_t>(4 + n)]));
            }
            rows->push_back(r);
        }
        ASSERT_GT(rows->size(), 100u);
        const Ran dumped =
            tool("dump-user " + quoted((dir->path() / "root/Users/Demo/UserDB.ddb").string()));
        ASSERT_EQ(dumped.code, 0);
        dump = new Json(Json::parse(dumped.out));

        // The day before the first: the report covers it as a day without an entry.
        const Json& first = (*dump)["days"][0]["date"];
        const Ran before = eval({{"op", "step"}, {"date", first}, {"n", -1}});
        const Json from = Json::parse(before.out)["date"];
        fromText = new std::string(std::to_string(from[0].get<int>()) + "/" +
                                   std::to_string(from[1].get<int>()) + "/" +
                                   std::to_string(from[2].get<int>()));
        const Ran made =
            tool("report --user Demo --from " + *fromText + " --to " + rows->back().date +
                 " --pdf " + quoted((dir->path() / "report.pdf").string()));
        ASSERT_EQ(made.code, 0) << made.out;
        const Ran text =
            shell("pdftotext -layout " + quoted((dir->path() / "report.pdf").string()) + " -");
        ASSERT_EQ(text.code, 0) << "pdftotext (poppler-utils) is needed: " << text.out;
        pdfText = new std::string(text.out);

        const auto dayNumber = [](const std::string& date) {
            const std::vector<std::string> mdy = split(date, '/');
            const Ran answer =
                eval({{"op", "date"},
                      {"date", {std::stoi(mdy[0]), std::stoi(mdy[1]), std::stoi(mdy[2])}}});
            return Json::parse(answer.out)["dayNumber"].get<int>();
        };
        calendarDays = dayNumber(rows->back().date) - dayNumber(*fromText) + 1;
    }

    static void TearDownTestSuite() {
        delete pdfText;
        delete fromText;
        delete dump;
        delete rows;
        delete summary;
        delete dir;
    }

    static Ran tool(const std::string& args, const std::string& env = "") {
        return shell(env + " " + quoted(NUTROVEX_TOOL_PATH) + " --root " +
                     quoted((dir->path() / "root").string()) + " " + args);
    }

    // One eval request per element; the answers in order.
    static Ran eval(const Json& request) {
        const fs::path in = dir->path() / "eval.jsonl";
        std::ofstream(in) << request.dump() << "\n";
        return shell(quoted(NUTROVEX_TOOL_PATH) + " eval < " + quoted(in.string()));
    }
    static std::vector<Json> evalAll(const std::vector<Json>& requests) {
        const fs::path in = dir->path() / "eval.jsonl";
        {
            std::ofstream file(in);
            for (const Json& r : requests) {
                file << r.dump() << "\n";
            }
        }
        const Ran run = shell(quoted(NUTROVEX_TOOL_PATH) + " eval < " + quoted(in.string()));
        std::vector<Json> answers;
        for (const std::string& line : split(run.out, '\n')) {
            answers.push_back(Json::parse(line));
        }
        return answers;
    }

    // The table's line of a date, split into words; empty when the report has none.
    static std::vector<std::string> dayLine(const std::string& date) {
        for (const std::string& line : split(*pdfText, '\n')) {
            const std::vector<std::string> w = words(line);
            if (w.size() >= 2 && w[0].size() == 3 && w[1] == date) {
                return w;
            }
        }
        return {};
    }

    // Every line that starts with the label ("Week total"), split into words after it.
    static std::vector<std::vector<std::string>> labelled(const std::string& a,
                                                          const std::string& b) {
        std::vector<std::vector<std::string>> found;
        for (const std::string& line : split(*pdfText, '\n')) {
            std::vector<std::string> w = words(line);
            if (w.size() > 2 && w[0] == a && w[1] == b) {
                found.emplace_back(w.begin() + 2, w.end());
            }
        }
        return found;
    }

    static test::TempDir* dir;
    static std::string* summary;
    static std::vector<LogRow>* rows;
    static Json* dump;
    static std::string* fromText;
    static std::string* pdfText;
    static int calendarDays;
};

test::TempDir* ReportCommand::dir = nullptr;
std::string* ReportCommand::summary = nullptr;
std::vector<LogRow>* ReportCommand::rows = nullptr;
Json* ReportCommand::dump = nullptr;
std::string* ReportCommand::fromText = nullptr;
std::string* ReportCommand::pdfText = nullptr;
int ReportCommand::calendarDays = 0;

// The words of a day with food: date (2), calories, carbohydrate, fibre, its target, protein, its
// target, fat, saturated fat, its limit, exercise, BMR, weight, trend, budget, targets met.
enum Word : std::size_t {
    kCal = 2,
    kCarb,
    kFib,
    kFibTarget,
    kProt,
    kProtTarget,
    kFat,
    kSat,
    kSatLimit,
    kExercise,
    kBmr,
    kWeight,
    kTrend,
    kBudget,
    kMet,
    kWordCount
};

TEST_F(ReportCommand, EveryDayAgreesWithExportLogAndTheEvalOps) {
    // The day's totals, budget and targets as eval works them out from the dump's own days.
    const Json& profile = (*dump)["profile"];
    std::vector<Json> totalsRequests;
    for (const Json& day : (*dump)["days"]) {
        totalsRequests.push_back(
            {{"op", "dayTotals"}, {"groups", day["groups"]}, {"exercises", day["exercises"]}});
    }
    const std::vector<Json> totals = evalAll(totalsRequests);
    ASSERT_EQ(totals.size(), rows->size());
    std::vector<Json> budgetRequests;
    for (std::size_t i = 0; i < rows->size(); ++i) {
        const Json& day = (*dump)["days"][i];
        budgetRequests.push_back({{"op", "foodBudget"},
                                  {"day",
                                   {{"weight", day["weight"]},
                                    {"level", day["level"]},
                                    {"bmr", day["bmr"]},
                                    {"exerciseCalories", totals[i]["exerciseCalories"]}}},
                                  {"profile", profile}});
    }
    const std::vector<Json> budgets = evalAll(budgetRequests);
    std::vector<Json> targetRequests;
    for (std::size_t i = 0; i < rows->size(); ++i) {
        const std::string text = budgets[i]["text"];
        const int budget = text.ends_with(" cal") ? std::stoi(text) : 0;
        const Json& t = totals[i]["totals"];
        targetRequests.push_back(
            {{"op", "targets"},
             {"budget", budget},
             {"targets",
              {{"protein", {{"percent", 25}}},
               {"fiber", {{"grams", 25}}},
               {"saturatedFat", {{"grams", 20}}}}},
             {"totals", {{"protein", t[3]}, {"fiber", t[2]}, {"saturatedFat", t[5]}}}});
    }
    const std::vector<Json> targets = evalAll(targetRequests);

    int daysWithFood = 0;
    for (std::size_t i = 0; i < rows->size(); ++i) {
        const LogRow& r = (*rows)[i];
        SCOPED_TRACE(r.date);
        const std::vector<std::string> w = dayLine(r.date);
        ASSERT_FALSE(w.empty());
        const bool hasFood = (*dump)["days"][i]["groups"].dump() != "[[],[],[],[],[],[],[],[]]";
        if (!hasFood) {
            EXPECT_EQ(w[2] + " " + w[3] + " " + w[4], "no food logged");
            continue;
        }
        ++daysWithFood;
        ASSERT_EQ(w.size(), kWordCount);
        const std::size_t nutrientWord[6] = {kCal, kCarb, kFib, kProt, kFat, kSat};
        for (std::size_t n = 0; n < 6; ++n) {
            EXPECT_EQ(w[nutrientWord[n]], grouped(r.totals[n], n == 0 ? 0 : 1)) << "nutrient " << n;
            EXPECT_EQ(
                w[nutrientWord[n]],
                grouped(static_cast<double>(totals[i]["totals"][n].get<float>()), n == 0 ? 0 : 1));
        }
        EXPECT_EQ(w[kExercise], grouped(static_cast<double>(r.exercise), 0));
        EXPECT_EQ(w[kExercise], grouped(totals[i]["exerciseCalories"].get<double>(), 0));
        EXPECT_EQ(w[kBmr], r.level == 0 ? "\u2014" : grouped(r.bmr, 0));
        EXPECT_EQ(w[kWeight], r.weight.empty() ? "\u2014" : grouped(std::stof(r.weight), 1));
        const std::string budget = budgets[i]["text"];
        EXPECT_EQ(w[kBudget], budget.ends_with(" cal") ? grouped(std::stod(budget), 0) : "\u2014");
        const Json& lines = targets[i]["targets"];
        EXPECT_EQ(w[kFibTarget], "25.0");
        EXPECT_EQ(w[kSatLimit], "20.0");
        EXPECT_EQ(w[kProtTarget], lines["protein"]["grams"].is_null()
                                      ? "\u2014"
                                      : grouped(lines["protein"]["grams"].get<double>(), 1));
        EXPECT_EQ(w[kMet], targets[i]["dayWithin"].get<bool>() ? "yes" : "no");
    }
    EXPECT_GT(daysWithFood, 100);
    // Every calendar day has its line, those without an entry too.
    int dayLines = 0;
    for (const std::string& line : split(*pdfText, '\n')) {
        const std::vector<std::string> w = words(line);
        dayLines +=
            w.size() >= 2 && w[0].size() == 3 && std::count(w[1].begin(), w[1].end(), '/') == 2;
    }
    EXPECT_EQ(dayLines, calendarDays);
    // The day before the logbook's first.
    const std::vector<std::string> before = dayLine(*fromText);
    ASSERT_GE(before.size(), 7u);
    EXPECT_EQ(before[2] + " " + before[3] + " " + before[4], "no entry in");
}

TEST_F(ReportCommand, WeeksAndTheRangeAddUpExportLogsDays) {
    // Weeks of seven days from the first day of the range, which has no entry.
    std::vector<std::array<double, 6>> weekSums;
    std::vector<int> weekFoodDays;
    std::array<double, 6> rangeSums{};
    int rangeFoodDays = 0;
    std::size_t day = 1;  // the range's first day is the one before the log's first
    std::map<std::string, std::size_t> dayIndex;  // date -> day of the range
    {
        std::vector<Json> requests;
        for (const LogRow& r : *rows) {
            const std::vector<std::string> mdy = split(r.date, '/');
            requests.push_back(
                {{"op", "date"},
                 {"date", {std::stoi(mdy[0]), std::stoi(mdy[1]), std::stoi(mdy[2])}}});
        }
        const std::vector<std::string> mdy = split(*fromText, '/');
        requests.push_back(
            {{"op", "date"}, {"date", {std::stoi(mdy[0]), std::stoi(mdy[1]), std::stoi(mdy[2])}}});
        const std::vector<Json> answers = evalAll(requests);
        const int first = answers.back()["dayNumber"];
        for (std::size_t i = 0; i < rows->size(); ++i) {
            dayIndex[(*rows)[i].date] =
                static_cast<std::size_t>(answers[i]["dayNumber"].get<int>() - first);
        }
        day = dayIndex[rows->back().date] + 1;
    }
    const std::size_t weeks = (day + 6) / 7;
    weekSums.assign(weeks, {});
    weekFoodDays.assign(weeks, 0);
    for (const LogRow& r : *rows) {
        if (r.totals[0] <= 0.0) {
            continue;  // no food: left out, not a zero
        }
        const std::size_t week = dayIndex[r.date] / 7;
        for (std::size_t n = 0; n < 6; ++n) {
            weekSums[week][n] += r.totals[n];
            rangeSums[n] += r.totals[n];
        }
        ++weekFoodDays[week];
        ++rangeFoodDays;
    }
    const auto totals = labelled("Week", "total");
    const auto averages = labelled("Week", "average");
    ASSERT_EQ(totals.size(), weeks);
    ASSERT_EQ(averages.size(), weeks);
    // The totals' words: the six nutrients with the two targets' empty cells left out, exercise.
    const std::size_t at[6] = {0, 1, 2, 3, 4, 5};
    for (std::size_t k = 0; k < weeks; ++k) {
        SCOPED_TRACE("week " + std::to_string(k + 1));
        for (std::size_t n = 0; n < 6; ++n) {
            EXPECT_EQ(totals[k][at[n]], grouped(weekSums[k][n], n == 0 ? 0 : 1));
        }
        // The averages have the targets' average grams beside fibre, protein and saturated fat.
        const std::size_t avgAt[6] = {0, 1, 2, 4, 6, 7};
        for (std::size_t n = 0; n < 6; ++n) {
            EXPECT_EQ(averages[k][avgAt[n]],
                      grouped(weekSums[k][n] / weekFoodDays[k], n == 0 ? 0 : 1));
        }
    }
    const auto rangeTotal = labelled("Range", "total");
    const auto rangeAverage = labelled("Range", "average");
    ASSERT_EQ(rangeTotal.size(), 1u);
    ASSERT_EQ(rangeAverage.size(), 1u);
    for (std::size_t n = 0; n < 6; ++n) {
        EXPECT_EQ(rangeTotal[0][n], grouped(rangeSums[n], n == 0 ? 0 : 1));
    }
    EXPECT_EQ(rangeAverage[0][0], grouped(rangeSums[0] / rangeFoodDays, 0));
}

TEST_F(ReportCommand, MaintenanceIsExportLogsAndTheEvalOps) {
    // "measured maintenance: 2,265 cal a day over ..." from export-log.
    const std::size_t colon = summary->find(": ");
    const std::size_t end = summary->find(" cal a day");
    ASSERT_NE(end, std::string::npos) << *summary;
    std::string calories = summary->substr(colon + 2, end - colon - 2);
    // The maintenance section reads as the food budget page does: figures without grouping.
    std::erase(calories, ',');
    EXPECT_NE(pdfText->find("Maintenance (28 days): " + calories + " cal"), std::string::npos);

    Json days = Json::array();
    for (std::size_t i = 0; i < rows->size(); ++i) {
        const LogRow& r = (*rows)[i];
        const std::vector<std::string> mdy = split(r.date, '/');
        days.push_back({{"date", {std::stoi(mdy[0]), std::stoi(mdy[1]), std::stoi(mdy[2])}},
                        {"weight", r.weight.empty() ? -1.0 : std::stod(r.weight)},
                        {"calories", static_cast<long>(r.totals[0])}});
    }
    const Json last = (*dump)["days"].back()["date"];
    const Json m =
        Json::parse(eval({{"op", "maintenance"}, {"current", last}, {"days", days}}).out);
    ASSERT_TRUE(m["valid"].get<bool>());
    // The op takes whole calories a day; the report keeps their fractions.
    std::string digits;
    for (const char c : calories) {
        if (c != ',') {
            digits += c;
        }
    }
    EXPECT_NEAR(m["calories"].get<double>(), std::stod(digits), 1.0);
}

TEST_F(ReportCommand, PagesAreNumberedAndLetterFollowsTheLocale) {
    const Ran info = shell("pdfinfo " + quoted((dir->path() / "report.pdf").string()));
    ASSERT_EQ(info.code, 0);
    EXPECT_NE(info.out.find("A4"), std::string::npos) << info.out;
    std::string pages;
    for (const std::string& line : split(info.out, '\n')) {
        if (line.starts_with("Pages:")) {
            pages = words(line).back();
        }
    }
    ASSERT_FALSE(pages.empty());
    for (int p = 1; p <= std::stoi(pages); ++p) {
        EXPECT_NE(pdfText->find("Page " + std::to_string(p) + " of " + pages), std::string::npos);
    }
    // The header is repeated on every page of the table.
    std::size_t heads = 0;
    for (std::size_t at = pdfText->find("Calories"); at != std::string::npos;
         at = pdfText->find("Calories", at + 1)) {
        ++heads;
    }
    EXPECT_EQ(heads, static_cast<std::size_t>(std::stoi(pages)));

    const fs::path letter = dir->path() / "letter.pdf";
    ASSERT_EQ(tool("report --user Demo --from " + *fromText + " --to " + rows->back().date +
                       " --pdf " + quoted(letter.string()),
                   "LC_ALL=en_US.UTF-8")
                  .code,
              0);
    EXPECT_NE(shell("pdfinfo " + quoted(letter.string())).out.find("612 x 792"), std::string::npos);
}

TEST_F(ReportCommand, HtmlHoldsTheSameRows) {
    const fs::path page = dir->path() / "report.html";
    ASSERT_EQ(tool("report --user Demo --from " + *fromText + " --to " + rows->back().date +
                   " --html " + quoted(page.string()))
                  .code,
              0);
    const std::string html = slurp(page);
    std::size_t dayRows = 0;
    for (std::size_t at = html.find("<tr class=\"day\">"); at != std::string::npos;
         at = html.find("<tr class=\"day\">", at + 1)) {
        ++dayRows;
    }
    EXPECT_EQ(dayRows, static_cast<std::size_t>(calendarDays));
    const auto rangeTotal = labelled("Range", "total");
    ASSERT_EQ(rangeTotal.size(), 1u);
    EXPECT_NE(html.find("<td class=\"text\">Range total</td><td>" + rangeTotal[0][0] + "</td>"),
              std::string::npos);
    EXPECT_NE(html.find("<img alt=\"Historic weight"), std::string::npos);
    EXPECT_NE(html.find("data:image/png;base64,iVBOR"), std::string::npos);
}

TEST_F(ReportCommand, AFifoTakesTheReportAndStaysAFifo) {
    const std::string range = " --from " + *fromText + " --to " + rows->back().date;
    const fs::path file = dir->path() / "page.html";
    ASSERT_EQ(tool("report --user Demo" + range + " --html " + quoted(file.string())).code, 0);

    const fs::path fifo = dir->path() / "pipe";
    for (const std::string& kind : {std::string("--html"), std::string("--pdf")}) {
        SCOPED_TRACE(kind);
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        auto received = std::async(std::launch::async, [fifo] { return slurp(fifo); });
        const Ran run =
            tool("report --user Demo" + range + " " + kind + " " + quoted(fifo.string()));
        if (const int fd = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK); fd >= 0) {
            ::close(fd);  // lets a reader still waiting for a writer go
        }
        const std::string bytes = received.get();
        EXPECT_EQ(run.code, 0) << run.out;
        struct stat st {};
        ASSERT_EQ(::lstat(fifo.c_str(), &st), 0);
        EXPECT_TRUE(S_ISFIFO(st.st_mode)) << "the FIFO was replaced";
        if (kind == "--html") {
            EXPECT_EQ(bytes, slurp(file));
        } else {
            EXPECT_TRUE(bytes.starts_with("%PDF-")) << bytes.substr(0, 16);
            EXPECT_NE(bytes.find("%%EOF", bytes.size() - 16), std::string::npos);
        }
        fs::remove(fifo);
    }
}

TEST_F(ReportCommand, RefusalsAreOneLineAndTheRootIsOnlyRead) {
    const fs::path userFile = dir->path() / "root" / "Users" / "Demo" / "UserDB.ddb";
    const std::string before = slurp(userFile);
    const std::string out = quoted((dir->path() / "refused.pdf").string());
    struct Case {
        std::string args;
        int code;
        std::string says;
    };
    const std::vector<Case> cases = {
        {"--from 2/30/2026 --to 3/1/2026 --pdf " + out, 1, "'2/30/2026' is not a date"},
        {"--from 3/1/2026 --to 13/1/2026 --pdf " + out, 1, "'13/1/2026' is not a date"},
        {"--from 3/1/2026 --to 2/1/2026 --pdf " + out, 1, "ends before it starts"},
        {"--from 3/1/2020 --to 3/31/2020 --pdf " + out, 1, "the logbook has no days"},
        {"--from 3/1/2026 --to 3/31/2026", 2, "give one of --pdf FILE and --html FILE"},
        {"--from 3/1/2026 --to 3/31/2026 --pdf a --html b", 2, "give one of"},
        {"--from 3/1/2026 --pdf " + out, 2, "are required"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args);
        const Ran run = tool("report --user Demo " + c.args);
        EXPECT_EQ(run.code, c.code);
        EXPECT_NE(run.out.find(c.says), std::string::npos) << run.out;
        if (c.code == 1) {
            EXPECT_EQ(split(run.out, '\n').size(), 1u) << run.out;
        }
    }
    EXPECT_FALSE(fs::exists(dir->path() / "refused.pdf"));
    EXPECT_EQ(tool("report --user Nobody --from 3/1/2026 --to 3/2/2026 --pdf " + out).code, 1);

    // Outputs follow the tool's rule: a device is written through, a folder refused.
    const std::string range = " --from " + *fromText + " --to " + rows->back().date;
    EXPECT_EQ(tool("report --user Demo" + range + " --pdf /dev/null").code, 0);
    fs::create_directory(dir->path() / "folder");
    const Ran folder =
        tool("report --user Demo" + range + " --html " + quoted((dir->path() / "folder").string()));
    EXPECT_EQ(folder.code, 1);
    EXPECT_TRUE(fs::is_directory(dir->path() / "folder"));

    // Targets that cannot be read are said, never left out of the report as if none were set.
    const fs::path targets = dir->path() / "root" / "Users" / "Demo" / "Targets.json";
    const std::string kept = slurp(targets);
    std::ofstream(targets) << R"({"version": 1, "protein": {"percent": 25})";
    const Ran broken = tool("report --user Demo" + range + " --pdf " + out);
    std::ofstream(targets) << kept;
    EXPECT_EQ(broken.code, 1);
    EXPECT_NE(broken.out.find("Targets.json"), std::string::npos) << broken.out;

    EXPECT_EQ(slurp(userFile), before);
}

}  // namespace
}  // namespace nutrovex::tool
