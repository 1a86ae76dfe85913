#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "TempDir.h"

#include "calc/Totals.h"
#include "forms/logbook/ReportForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

// Ann's logbook: 1 to 20 November 2002 and nothing after; the logbook shows 21 November.
class ReportFormTest : public LogbookFixture {
protected:
    ReportFormTest() {
        store.profile.setUserName("Ann");
        for (int d = 1; d <= 20; ++d) {
            addDay(d, 11, 2002);
        }
        cursor.setCurrentDate(dmy(21, 11, 2002));
    }

    static std::string range(const ReportFormView& v) { return v.fromText + " - " + v.toText; }
    static std::string range(const CalendarDate& from, const CalendarDate& to) {
        return longDateText(from) + " - " + longDateText(to);
    }

    MacroTargets targets;
};

TEST_F(ReportFormTest, AWeekOrAMonthEndsOnTheLastDayAndTheFirstDayMakesItCustom) {
    ReportForm form(cursor, targets);
    EXPECT_EQ(form.view().span, ReportSpan::Week);
    EXPECT_EQ(range(form.view()), range(dmy(15, 11, 2002), dmy(21, 11, 2002)));

    (void)form.command(ReportForm::Command::Month);
    EXPECT_EQ(range(form.view()), range(dmy(22, 10, 2002), dmy(21, 11, 2002)));
    (void)form.pickDate(ReportForm::Field::To, dmy(15, 3, 2003));
    EXPECT_EQ(range(form.view()), range(dmy(16, 2, 2003), dmy(15, 3, 2003)));

    (void)form.command(ReportForm::Command::Week);
    (void)form.pickDate(ReportForm::Field::To, dmy(10, 11, 2002));
    EXPECT_EQ(range(form.view()), range(dmy(4, 11, 2002), dmy(10, 11, 2002)));

    (void)form.pickDate(ReportForm::Field::From, dmy(2, 11, 2002));
    EXPECT_EQ(form.view().span, ReportSpan::Custom);
    EXPECT_EQ(range(form.view()), range(dmy(2, 11, 2002), dmy(10, 11, 2002)));
    // A custom range keeps its first day whatever its last.
    (void)form.pickDate(ReportForm::Field::To, dmy(12, 11, 2002));
    EXPECT_EQ(range(form.view()), range(dmy(2, 11, 2002), dmy(12, 11, 2002)));
    EXPECT_EQ(form.view().fileName, "Ann 2002-11-02 to 2002-11-12.pdf");
    EXPECT_EQ(form.view().documentName, "Nutrovex report: Ann, 11/2/2002 to 11/12/2002");
    // Choosing custom changes no date.
    (void)form.command(ReportForm::Command::Custom);
    EXPECT_EQ(range(form.view()), range(dmy(2, 11, 2002), dmy(12, 11, 2002)));
}

TEST_F(ReportFormTest, ARangeThatCannotBeReportedSaysWhyInTheToolsWords) {
    struct Case {
        CalendarDate from;
        CalendarDate to;
        std::string failure;  // of the targets file
        std::string problem;
    };
    const Case cases[] = {
        {dmy(1, 11, 2002), dmy(20, 11, 2002), "", ""},
        // One recorded day in the range is enough.
        {dmy(20, 11, 2002), dmy(30, 11, 2002), "", ""},
        {dmy(21, 11, 2002), dmy(30, 11, 2002), "",
         "the logbook has no days from 11/21/2002 to 11/30/2002"},
        {dmy(10, 11, 2002), dmy(9, 11, 2002), "",
         "the range ends before it starts: 11/10/2002 to 11/9/2002"},
        {dmy(1, 11, 2002), dmy(20, 11, 2002), "Targets.json: line 1 ends early",
         "Targets.json: line 1 ends early"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(range(c.from, c.to) + " " + c.failure);
        ReportForm form(cursor, targets, c.failure);
        (void)form.pickDate(ReportForm::Field::From, c.from);
        (void)form.pickDate(ReportForm::Field::To, c.to);
        const ReportFormView v = form.view();
        EXPECT_EQ(v.problem, c.problem);
        EXPECT_EQ(v.canPrint, c.problem.empty());
        const std::optional<RangeReport> report = form.report();
        ASSERT_EQ(report.has_value(), c.problem.empty());
        if (report) {
            EXPECT_EQ(report->days.size(),
                      static_cast<std::size_t>(dayNumber(c.to) - dayNumber(c.from) + 1));
        }
        EXPECT_EQ(form.close(), SavePoint::Nothing);
    }
}

TEST_F(ReportFormTest, TheReportCarriesTheTargetsSet) {
    targets.of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 25.0};
    FoodItem dal;
    dal.name = "Dal";
    dal.ratio = 1.0f;
    dal.nutrients = {300.0f, 40.0f, 12.0f, 15.0f, 6.0f, 1.0f};
    DayRecord& day = store.dayAt(13);  // 14 November
    day.group(2).push_back(dal);
    rebuildAllFoods(day);
    ReportForm form(cursor, targets);
    (void)form.pickDate(ReportForm::Field::To, dmy(20, 11, 2002));
    const std::optional<RangeReport> report = form.report();
    ASSERT_TRUE(report.has_value());
    EXPECT_EQ(report->targets, targets);
    constexpr auto kFiber = static_cast<std::size_t>(TargetNutrient::Fiber);
    EXPECT_EQ(report->days[0].targetGrams[kFiber], 25.0);
    EXPECT_TRUE(report->days[0].targetsJudged);
    EXPECT_FALSE(report->days[0].targetsMet);  // 12 g of the 25
    // A day without food is judged against no target.
    EXPECT_FALSE(report->days[1].targetGrams[kFiber].has_value());
}

TEST_F(ReportFormTest, AnExportIsWrittenWhereChosenOrSaysWhyNot) {
    const ReportForm form(cursor, targets);
    const test::TempDir dir;
    const std::vector<uint8_t> pdf = {'%', 'P', 'D', 'F', '-', '1', '.', '4', '\n'};
    const std::filesystem::path file = dir.path() / "Ann.pdf";
    std::ofstream(file) << "an older, longer export";
    EXPECT_EQ(form.writeFile(file, pdf), Outcome{});
    std::ifstream in(file, std::ios::binary);
    EXPECT_EQ(std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {}), pdf);

    const Outcome folder = form.writeFile(dir.path(), pdf);
    ASSERT_TRUE(folder.message.has_value());
    EXPECT_EQ(folder.message->caption, "Export PDF");
    EXPECT_NE(folder.message->text.find("it is a folder"), std::string::npos)
        << folder.message->text;
    EXPECT_EQ(folder.notices, Notices{});

    const Outcome nothing = form.writeFile(dir.path() / "empty.pdf", {});
    ASSERT_TRUE(nothing.message.has_value());
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "empty.pdf"));
}

}  // namespace
}  // namespace nutrovex
