#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "ui/frame/MessageBoxes.h"
#include "ui/frame/WaitCursor.h"

namespace nutrovex {
namespace {

TEST(MessageBoxes, AScreenMessageBecomesItsBox) {
    const struct {
        ScreenMessage message;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
    } cases[] = {
        {{"Could not delete the user.", "Delete User", MessageKind::Warning},
         QMessageBox::Warning,
         QMessageBox::Ok},
        {{"Delete the user name and ALL ASSOCIATED DATA of 'Ann'?", "Delete User",
          MessageKind::Question},
         QMessageBox::Question,
         QMessageBox::Yes | QMessageBox::No},
        {{"Error loading data files. Please reinstall Nutrovex.", "Registry Error",
          MessageKind::Critical},
         QMessageBox::Critical,
         QMessageBox::Ok},
        // Stored text is Windows-1252: 0xE9 is an e with an acute accent.
        {{"Caf\xE9  au lait", "Caf\xE9", MessageKind::Warning},
         QMessageBox::Warning,
         QMessageBox::Ok},
    };
    for (const auto& c : cases) {
        const auto box = makeMessageBox(nullptr, c.message);
        EXPECT_EQ(box->windowTitle().toStdString(),
                  QString::fromLatin1(c.message.caption.c_str()).toStdString());
        EXPECT_EQ(box->text().toStdString(),
                  QString::fromLatin1(c.message.text.c_str()).toStdString());
        EXPECT_EQ(box->icon(), c.icon) << c.message.text;
        EXPECT_EQ(box->standardButtons(), c.buttons) << c.message.text;
    }
    // A question defaults to No, so a stray Enter never deletes anything.
    const auto question = makeMessageBox(nullptr, {"Sure?", "Delete Food", MessageKind::Question});
    ASSERT_NE(question->defaultButton(), nullptr);
    EXPECT_EQ(question->standardButton(question->defaultButton()), QMessageBox::No);
}

// Presses a button of the message box that opens next, once it is shown.
void answerNextBox(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, [button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        box->button(button)->click();
    });
}

TEST(MessageBoxes, ShowingAQuestionReturnsThePersonsAnswer) {
    const ScreenMessage question{"Delete?", "Delete Food", MessageKind::Question};
    answerNextBox(QMessageBox::Yes);
    EXPECT_TRUE(showMessage(nullptr, question));
    answerNextBox(QMessageBox::No);
    EXPECT_FALSE(showMessage(nullptr, question));
}

TEST(MessageBoxes, AFailureIsShownAndSuccessIsNot) {
    EXPECT_TRUE(showFailure(nullptr, SessionStatus{}));  // no box: nothing to answer

    SessionStatus failed;
    failed.add("UserDB.ddb: the disk is full");
    failed.add("FoodDB.ddb: the disk is full");
    QString shown;
    QTimer::singleShot(0, [&shown] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->text();
        box->button(QMessageBox::Ok)->click();
    });
    EXPECT_FALSE(showFailure(nullptr, failed));
    EXPECT_EQ(shown.toStdString(), "UserDB.ddb: the disk is full\nFoodDB.ddb: the disk is full");
}

TEST(WaitCursor, ShownWhileTheGuardLivesAndNested) {
    ASSERT_EQ(QApplication::overrideCursor(), nullptr);
    {
        const WaitCursor outer;
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        { const WaitCursor inner; }
        ASSERT_NE(QApplication::overrideCursor(), nullptr);  // the outer guard still holds it
    }
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace nutrovex
