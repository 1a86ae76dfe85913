#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTest>

#include "foods/DayFoods.h"
#include "storage/UserStorage.h"
#include "ui/ScreenSession.h"
#include "ui/foods/CopyToDialog.h"
#include "ui/logbook/LogbookDialog.h"

namespace nutrovex {
namespace {

using Figure = LogbookDialog::Figure;
using test::whenModal;

FoodItem eaten(const char* name, uint16_t group, uint16_t meal, float calories) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.group = group;
    f.meal = meal;
    f.loggedFlag = 1;
    f.setReference({1, ServingUnit::Item, 0});
    f.setServing({1, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    return f;
}

class CopyToDialogTest : public test::ScreenSession {};

// With the keyboard only: the logbook's Record menu opens Copy Day To, the breakfast is chosen,
// copied to tomorrow (the date it offers), and the logbook's next day shows it; closing the
// screen saved it.
TEST_F(CopyToDialogTest, TodaysBreakfastGoesToTomorrowByKeyboard) {
    DayRecord* today = session.days().ensureCurrentRecord();
    ASSERT_NE(today, nullptr);
    for (const FoodItem& f :
         {eaten("Bagel", 5, 0, 245), eaten("Tea", 6, 0, 2), eaten("Pizza", 5, 2, 600)}) {
        ASSERT_NE(insertLoggedFood(*today, f, f.group, kSortByMeal), kNoPosition);
    }

    LogbookOpeners openers;
    openers.copyDay = [this](QWidget* parent) {
        CopyToDialog dialog(CopyToForm(session, kAllFoodsGroup, {}, CopyChoice::WholeDay), notifier,
                            parent);
        dialog.exec();
    };
    LogbookDialog logbook(LogbookForm(session.days()), notifier, nullptr, openers);
    logbook.show();
    QApplication::setActiveWindow(&logbook);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&logbook));

    QString offeredDate;
    QString copiedLine;
    whenModal<CopyToDialog>([&](CopyToDialog* copy) {
        QApplication::setActiveWindow(copy);
        QTest::keyClick(copy, Qt::Key_W, Qt::AltModifier);
        EXPECT_EQ(QApplication::focusWidget(), copy->whatList());
        QTest::keyClick(copy->whatList(), Qt::Key_Home);
        EXPECT_EQ(copy->whatList()->currentText(), QStringLiteral("Breakfast (2 foods)"));
        offeredDate = copy->dateLabel()->text();
        QTest::keyClick(copy, Qt::Key_C, Qt::AltModifier);
        (void)QTest::qWaitFor([&] { return !copy->resultLabel()->text().isEmpty(); });
        copiedLine = copy->resultLabel()->text();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(&logbook, Qt::Key_R, Qt::AltModifier);
    (void)QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; });
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_C);

    EXPECT_EQ(offeredDate, QStringLiteral("Friday November 22, 2002"));
    EXPECT_EQ(copiedLine, QStringLiteral("Copied 2 foods to Friday November 22, 2002 of Zerbu."));
    QApplication::setActiveWindow(&logbook);
    QTest::keyClick(&logbook, Qt::Key_PageDown);
    EXPECT_EQ(logbook.dateText(), QStringLiteral("Friday November 22, 2002"));
    EXPECT_TRUE(logbook.figureText(Figure::Meals).startsWith(QStringLiteral("247")))
        << logbook.figureText(Figure::Meals).toStdString();

    UserStore saved(clock);
    saved.dataFilePath = userFile();
    ASSERT_TRUE(loadUser(saved).ok());
    const DayRecord* tomorrow = saved.dayOf(CalendarDate::fromDmy(22, 11, 2002));
    ASSERT_NE(tomorrow, nullptr);
    EXPECT_EQ(tomorrow->group(5).size(), 1u);
    EXPECT_EQ(tomorrow->group(6).size(), 1u);
}

}  // namespace
}  // namespace nutrovex
