#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "ui/ScreenFixture.h"
#include "ui/frame/UsersDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

// The list's names in order, joined by "|".
std::string listed(const UsersDialog& dialog) {
    QStringList names;
    for (int i = 0; i < dialog.list()->count(); ++i) {
        names << dialog.list()->item(i)->text();
    }
    return names.join(u'|').toStdString();
}

// Presses a button of the screen with the keyboard: Tab to it, then Space.
void press(UsersDialog& dialog, const QString& name) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        if (button->accessibleName() == name) {
            button->setFocus(Qt::TabFocusReason);
            QTest::keyClick(button, Qt::Key_Space);
            return;
        }
    }
    ADD_FAILURE() << "no button " << name.toStdString();
}

QString selected(const UsersDialog& dialog) {
    const QListWidgetItem* item = dialog.list()->currentItem();
    return item != nullptr ? item->text() : QString();
}

// Types a name into the next name dialog and presses Enter.
void typeName(const QString& name, QString* title = nullptr) {
    whenModal<UserNameDialog>([name, title](UserNameDialog* ask) {
        if (title != nullptr) {
            *title = ask->windowTitle();
        }
        ask->nameEdit()->selectAll();
        QTest::keyClicks(ask->nameEdit(), name);
        QTest::keyClick(ask->nameEdit(), Qt::Key_Return);
    });
}

class UsersDialogTest : public ::testing::Test, public test::ScreenFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(started());
        ASSERT_TRUE(session().initialLoad());
    }
};

TEST_F(UsersDialogTest, AddingBobNextToBobAndTwiceIsRefused) {
    UsersDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(listed(dialog), "Zerbu");

    QString title;
    typeName(QStringLiteral("bob"), &title);
    press(dialog, QStringLiteral("New..."));
    EXPECT_EQ(title, QStringLiteral("New User"));
    typeName(QStringLiteral("Bob"));
    press(dialog, QStringLiteral("New..."));

    EXPECT_EQ(listed(dialog), "bob|Bob|Zerbu");
    EXPECT_EQ(selected(dialog), QStringLiteral("Bob"));
    EXPECT_EQ(session().openUserName(), "Bob");  // the new user is the open one
    EXPECT_TRUE(std::filesystem::exists(root() / "Users" / "Bob" / "UserDB.ddb"));

    // Bob again: refused, and the name dialog stays until it is cancelled.
    SeenMessage seen;
    bool askedAgain = false;
    whenModal<UserNameDialog>([&](UserNameDialog* ask) {
        QTest::keyClicks(ask->nameEdit(), QStringLiteral("Bob"));
        whenModal<QMessageBox>([&](QMessageBox* box) {
            seen = {box->text(), box->windowTitle(), box->icon()};
            whenModal<UserNameDialog>([&](UserNameDialog* again) {
                askedAgain = true;
                QTest::keyClick(again, Qt::Key_Escape);
            });
            box->button(QMessageBox::Ok)->click();
        });
        QTest::keyClick(ask->nameEdit(), Qt::Key_Return);
    });
    press(dialog, QStringLiteral("New..."));
    EXPECT_EQ(seen.text, QStringLiteral("Could not add the user.  Make sure you are not inputting "
                                        "a duplicate name."));
    EXPECT_EQ(seen.caption, QStringLiteral("New User"));
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_TRUE(askedAgain);
    EXPECT_EQ(listed(dialog), "bob|Bob|Zerbu");
}

TEST_F(UsersDialogTest, RenamingToADuplicateIsRefusedAndToANewNameMovesTheSelection) {
    ASSERT_TRUE(session().addUser("Ann"));
    ASSERT_TRUE(session().switchUser("Zerbu"));
    UsersDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    dialog.list()->setCurrentRow(0);
    ASSERT_EQ(selected(dialog), QStringLiteral("Ann"));

    SeenMessage seen;
    QString title;
    typeName(QStringLiteral("Zerbu"), &title);
    answerMessage(QMessageBox::Ok, &seen);
    press(dialog, QStringLiteral("Rename..."));
    EXPECT_EQ(title, QStringLiteral("Rename User"));
    EXPECT_EQ(seen.text, QStringLiteral("Could not rename the user.  Make sure you are not "
                                        "inputting a duplicate name."));
    EXPECT_EQ(seen.caption, QStringLiteral("Rename User"));
    EXPECT_EQ(listed(dialog), "Ann|Zerbu");

    typeName(QStringLiteral("Maya"));
    press(dialog, QStringLiteral("Rename..."));
    EXPECT_EQ(listed(dialog), "Maya|Zerbu");
    EXPECT_EQ(selected(dialog), QStringLiteral("Maya"));
    EXPECT_EQ(session().openUserName(), "Zerbu");
}

TEST_F(UsersDialogTest, DeletingAsksFirstAndTheOpenUserGivesWayToAnother) {
    ASSERT_TRUE(session().addUser("Ann"));  // open and remembered
    UsersDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    ASSERT_EQ(selected(dialog), QStringLiteral("Ann"));

    SeenMessage seen;
    answerMessage(QMessageBox::No, &seen);
    press(dialog, QStringLiteral("Delete"));
    EXPECT_EQ(seen.text, QStringLiteral("Delete the user name and ALL ASSOCIATED DATA of 'Ann'?"));
    EXPECT_EQ(seen.caption, QStringLiteral("Delete User"));
    EXPECT_EQ(seen.icon, QMessageBox::Question);
    EXPECT_EQ(listed(dialog), "Ann|Zerbu");

    int changes = 0;
    QObject::connect(&notifier(), &SessionNotifier::userChanged, [&changes] { ++changes; });
    answerMessage(QMessageBox::Yes);
    press(dialog, QStringLiteral("Delete"));
    EXPECT_EQ(listed(dialog), "Zerbu");
    EXPECT_FALSE(std::filesystem::exists(root() / "Users" / "Ann"));
    EXPECT_TRUE(session().userOpen());
    EXPECT_EQ(session().openUserName(), "Zerbu");
    EXPECT_EQ(selected(dialog), QStringLiteral("Zerbu"));
    EXPECT_GE(changes, 1);
}

TEST_F(UsersDialogTest, OkOpensTheSelectedUserAndPreselectsTheRememberedOne) {
    ASSERT_TRUE(session().addUser("Ann"));
    ASSERT_TRUE(session().addUser("Lee"));
    settings().setCurrentUserName("ann");  // matched ignoring case
    UsersDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(selected(dialog), QStringLiteral("Ann"));

    QTest::keyClick(dialog.list(), Qt::Key_Down);
    EXPECT_EQ(selected(dialog), QStringLiteral("Lee"));
    QTest::keyClick(&dialog, Qt::Key_Escape);  // Escape acts as OK
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(session().openUserName(), "Lee");
}

}  // namespace
}  // namespace nutrovex
