#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

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

}  // namespace
}  // namespace nutrovex
