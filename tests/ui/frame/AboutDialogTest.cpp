#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "ui/foods/FoodScreens.h"
#include "ui/frame/AboutDialog.h"

namespace nutrovex {
namespace {

TEST(AboutDialog, ShowsTheProductVersionAndLicenceAndClosesOnOk) {
    AboutDialog dialog;
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));

    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        texts << label->text();
    }
    EXPECT_TRUE(texts.contains(QStringLiteral("Nutrovex"))) << texts.join(u'|').toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("V4.0.0.0"))) << texts.join(u'|').toStdString();
    const QString all = texts.join(u'|');
    EXPECT_TRUE(all.contains(QStringLiteral("GPL-3.0-or-later"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("public domain"))) << all.toStdString();

    const auto buttons = dialog.findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons[0]->text(), QStringLiteral("OK"));
    QTest::keyClick(&dialog, Qt::Key_Return);  // OK is the default button
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

// Screens are opened from a button or a menu inside a window; they cover that whole window.
TEST(AboutDialog, ScreensCoverTheWindowTheyAreOpenedFrom) {
    QWidget window;
    window.setGeometry(40, 30, 530, 700);
    auto* button = new QPushButton(QStringLiteral("Open"), &window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    AboutDialog about(button);
    FoodScreen food(button, QStringLiteral("Food"), true);
    for (QDialog* screen : std::initializer_list<QDialog*>{&about, &food}) {
        screen->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(screen));
        EXPECT_EQ(screen->size(), window.size()) << screen->windowTitle().toStdString();
        EXPECT_EQ(screen->pos(), window.pos()) << screen->windowTitle().toStdString();
        screen->hide();
    }
}

}  // namespace
}  // namespace nutrovex
