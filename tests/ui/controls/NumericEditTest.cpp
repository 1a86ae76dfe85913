#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include "ui/controls/NumericEdit.h"

namespace nutrovex {
namespace {

// A form with the numeric field and another field to move the focus to.
class NumericEditScreen : public ::testing::Test {
protected:
    QWidget form;
    NumericEdit* edit = new NumericEdit(&form);
    QLineEdit* other = new QLineEdit(&form);

    void SetUp() override {
        auto* layout = new QVBoxLayout(&form);
        layout->addWidget(edit);
        layout->addWidget(other);
        other->setFocus();
        form.show();
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    void enter() {
        edit->setFocus();
        ASSERT_TRUE(edit->hasFocus());
        QApplication::processEvents();  // the whole text gets selected
    }
    void leave() {
        other->setFocus();
        ASSERT_FALSE(edit->hasFocus());
    }
};

TEST_F(NumericEditScreen, TypingKeepsOnlyWhatANumberCanHold) {
    edit->setRange(-1000, 1000);
    enter();
    EXPECT_EQ(edit->selectedText(), QStringLiteral("1.00"));
    QTest::keyClicks(edit, QStringLiteral("12.3.4a,-"));
    EXPECT_EQ(edit->text(), QStringLiteral("12.34"));
    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClick(edit, Qt::Key_Minus);
    EXPECT_EQ(edit->text(), QStringLiteral("-12.34"));
    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("-12.3"));
    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClick(edit, Qt::Key_Right);
    QTest::keyClick(edit, Qt::Key_Delete);  // the character after the cursor
    EXPECT_EQ(edit->text(), QStringLiteral("-2.3"));
    QTest::keyClicks(edit, QStringLiteral("1"));
    EXPECT_EQ(edit->text(), QStringLiteral("-12.3"));
    leave();
    EXPECT_EQ(edit->text(), QStringLiteral("-12.30"));
    EXPECT_DOUBLE_EQ(edit->value(), -12.3);
    EXPECT_TRUE(edit->hasValue());
}

TEST_F(NumericEditScreen, FocusShowsTheBareNumberAndLeavingDecoratesIt) {
    edit->setRange(0, 1e7);
    edit->setPrefix(QStringLiteral("$"));
    edit->setFormat(2, true);
    edit->setValue(1234567.891);
    EXPECT_EQ(edit->text(), QStringLiteral("$1,234,567.89"));
    enter();
    EXPECT_EQ(edit->text(), QStringLiteral("1234567.89"));
    QTest::keyClicks(edit, QStringLiteral("20000000"));
    leave();
    EXPECT_EQ(edit->text(), QStringLiteral("$10,000,000.00"));  // clamped to the maximum
    EXPECT_EQ(edit->value(), 1e7);
}

TEST_F(NumericEditScreen, AnEmptiedFieldHasNoValue) {
    enter();
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_TRUE(edit->text().isEmpty());
    leave();
    EXPECT_FALSE(edit->hasValue());
    EXPECT_EQ(edit->value(), 0.0);
    EXPECT_EQ(edit->text(), QStringLiteral("0.00"));
    enter();
    EXPECT_EQ(edit->text(), QStringLiteral("0.00"));  // no value: the text stays as it is
}

TEST_F(NumericEditScreen, CommitReadsTheTextWhileFocused) {
    enter();
    QTest::keyClicks(edit, QStringLiteral("1234.567"));
    edit->commit();
    EXPECT_EQ(edit->value(), 999.99);
    EXPECT_EQ(edit->text(), QStringLiteral("999.99"));
}

TEST_F(NumericEditScreen, UpAndDownSetANumberWithoutTyping) {
    edit->setStartValue(1.0);
    enter();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClick(edit, Qt::Key_Down);  // from empty: the starting value
    EXPECT_EQ(edit->text(), QStringLiteral("1.00"));
    QTest::keyClick(edit, Qt::Key_Up);
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("3.00"));
    QTest::keyClick(edit, Qt::Key_Backspace);  // the stepped number is selected: typed over
    QTest::keyClicks(edit, QStringLiteral("998.5"));
    QTest::keyClick(edit, Qt::Key_Up);
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("999.99"));
    leave();
    EXPECT_TRUE(edit->hasValue());
    EXPECT_EQ(edit->value(), 999.99);
}

}  // namespace
}  // namespace nutrovex
