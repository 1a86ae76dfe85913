#include <gtest/gtest.h>

#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <string>

#include "ui/controls/CalendarPickerDialog.h"
#include "ui/logbook/LogbookData.h"
#include "ui/logbook/LogbookDialog.h"
#include "ui/logbook/ReportDialog.h"

namespace nutrovex {
namespace {

std::string quoted(const std::string& s) {
    std::string q = "'";
    for (const char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

// What a shell command printed; empty when it failed.
std::string run(const std::string& command) {
    std::string out;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return out;
    }
    char buffer[4096];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
        out.append(buffer, n);
    }
    return ::pclose(pipe) == 0 ? out : std::string();
}

std::string pdfText(const QString& path) {
    return run("pdftotext -layout " + quoted(path.toStdString()) + " - 2>/dev/null");
}

class ReportDialogTest : public test::LogbookScreens {
protected:
    // The first three weeks of November: a weigh-in and a meal every day, a walk every third.
    void fillNovember() {
        setLosingGoal();
        for (int d = 1; d <= 21; ++d) {
            (void)addDay(d, 11, 2002, 200.0f - 0.3f * static_cast<float>(d),
                         1700.0f + static_cast<float>(d * 23 % 400),
                         d % 3 == 0 ? static_cast<uint16_t>(280) : 0);
        }
    }

    static void pickInCalendar(QWidget* over, int d, int m, int y) {
        CalendarPickerDialog* picker = nullptr;
        for (CalendarPickerDialog* p : over->findChildren<CalendarPickerDialog*>()) {
            picker = p->isVisible() ? p : picker;
        }
        ASSERT_NE(picker, nullptr);
        picker->setDate(y, m - 1, d);
        QTest::mouseClick(picker->okButton(), Qt::LeftButton);
    }
};

TEST_F(ReportDialogTest, AWeekPickedInTheCalendarIsExportedAsTheToolReportsIt) {
    fillNovember();
    LogbookDialog logbook(LogbookForm(session.days()), notifier, nullptr, screens());
    logbook.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&logbook));
    logbook.command(QStringLiteral("Export PDF..."))->trigger();
    ReportDialog* report = logbook.findChild<ReportDialog*>();
    ASSERT_NE(report, nullptr);
    ASSERT_TRUE(report->isVisible());
    EXPECT_TRUE(report->exportButton()->isDefault());
    EXPECT_EQ(report->fromText(), QStringLiteral("Friday November 15, 2002"));
    EXPECT_EQ(report->toText(), QStringLiteral("Thursday November 21, 2002"));

    // A month, then a week again, ending on a day picked in the calendar.
    QTest::mouseClick(report->spanButton(ReportSpan::Month), Qt::LeftButton);
    EXPECT_EQ(report->fromText(), QStringLiteral("Tuesday October 22, 2002"));
    QTest::mouseClick(report->spanButton(ReportSpan::Week), Qt::LeftButton);
    QTest::mouseClick(report->setToButton(), Qt::LeftButton);
    pickInCalendar(report, 10, 11, 2002);
    EXPECT_EQ(report->fromText(), QStringLiteral("Monday November 4, 2002"));

    // A first day after the last is refused as the tool refuses it, and nothing can be made.
    QTest::mouseClick(report->setFromButton(), Qt::LeftButton);
    pickInCalendar(report, 12, 11, 2002);
    EXPECT_TRUE(report->spanButton(ReportSpan::Custom)->isChecked());
    EXPECT_EQ(report->problemText(),
              QStringLiteral("the range ends before it starts: 11/12/2002 to 11/10/2002"));
    EXPECT_FALSE(report->exportButton()->isEnabled());
    EXPECT_FALSE(report->printButton()->isEnabled());
    QTest::mouseClick(report->setFromButton(), Qt::LeftButton);
    pickInCalendar(report, 4, 11, 2002);
    EXPECT_TRUE(report->problemText().isEmpty());
    ASSERT_TRUE(report->exportButton()->isEnabled());

    // Print... shows the pages in the print preview, whose print button asks the system.
    int previewPages = 0;
    test::whenModal<QPrintPreviewDialog>([&previewPages](QPrintPreviewDialog* preview) {
        const auto* pages = preview->findChild<QPrintPreviewWidget*>();
        previewPages = pages != nullptr ? pages->pageCount() : -1;
        preview->reject();
    });
    QTest::mouseClick(report->printButton(), Qt::LeftButton);
    EXPECT_EQ(previewPages, 1);
    EXPECT_EQ(report->preview()->pageCount(), 1);

    QTemporaryDir out;
    ASSERT_TRUE(out.isValid());
    QString offered;
    report->setFileChooser([&](const QString& name) {
        offered = name;
        return out.filePath(QStringLiteral("week.pdf"));
    });
    QTest::mouseClick(report->exportButton(), Qt::LeftButton);
    EXPECT_EQ(offered, QStringLiteral("Zerbu 2002-11-04 to 2002-11-10.pdf"));
    const std::string text = pdfText(out.filePath(QStringLiteral("week.pdf")));
    ASSERT_FALSE(text.empty()) << "no PDF was written, or pdftotext (poppler-utils) is missing";
    for (int d = 4; d <= 10; ++d) {
        EXPECT_NE(text.find(" 11/" + std::to_string(d) + "/2002 "), std::string::npos) << d;
    }
    for (const char* outside : {" 11/3/2002 ", " 11/11/2002 "}) {
        EXPECT_EQ(text.find(outside), std::string::npos) << outside;
    }

    // The tool, on the same files, reports the same days in the same words.
    ASSERT_TRUE(session.saveAll().ok());
    const QString byTool = out.filePath(QStringLiteral("tool.pdf"));
    ASSERT_EQ(std::system((quoted(NUTROVEX_TOOL_PATH) + " --root " + quoted(root().string()) +
                           " report --user Zerbu --from 11/4/2002 --to 11/10/2002 --pdf " +
                           quoted(byTool.toStdString()))
                              .c_str()),
              0);
    EXPECT_EQ(pdfText(byTool), text);
    EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace nutrovex
