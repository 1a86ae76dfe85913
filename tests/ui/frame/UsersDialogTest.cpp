#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "ui/ScreenSession.h"
#include "ui/frame/UsersDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

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

class UsersDialogTest : public test::ScreenSession {
protected:
    UsersDialog& open() {
        dialog = std::make_unique<UsersDialog>(UsersForm(session), notifier, nullptr);
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        return *dialog;
    }

    // The list's names in order, joined by "|".
    [[nodiscard]] std::string listed() const {
        QStringList names;
        for (int i = 0; i < dialog->list()->count(); ++i) {
            names << dialog->list()->item(i)->text();
        }
        return names.join(u'|').toStdString();
    }
    [[nodiscard]] QString selected() const {
        const QList<QListWidgetItem*> items = dialog->list()->selectedItems();
        return items.isEmpty() ? QString() : items.front()->text();
    }

    // Presses a button of the screen with the keyboard: Tab to it, then Space.
    void press(const QString& name) {
        for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
            if (button->accessibleName() == name) {
                button->setFocus(Qt::TabFocusReason);
                QTest::keyClick(button, Qt::Key_Space);
                return;
            }
        }
        ADD_FAILURE() << "no button " << name.toStdString();
    }

    std::unique_ptr<UsersDialog> dialog;
};

TEST_F(UsersDialogTest, AddingBobNextToBobAndTwiceIsRefused) {
    open();
    EXPECT_EQ(listed(), "Zerbu");

    QString title;
    typeName(QStringLiteral("bob"), &title);
    press(QStringLiteral("New..."));
    EXPECT_EQ(title, QStringLiteral("New User"));
    typeName(QStringLiteral("Bob"));
    press(QStringLiteral("New..."));

    EXPECT_EQ(listed(), "bob|Bob|Zerbu");
    EXPECT_EQ(selected(), QStringLiteral("Bob"));
    EXPECT_EQ(session.openUserName(), "Bob");  // the new user is the open one
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
    press(QStringLiteral("New..."));
    EXPECT_EQ(seen.text, QStringLiteral("Could not add the user.  Make sure you are not inputting "
                                        "a duplicate name."));
    EXPECT_EQ(seen.caption, QStringLiteral("New User"));
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_TRUE(askedAgain);
    EXPECT_EQ(listed(), "bob|Bob|Zerbu");
}

TEST_F(UsersDialogTest, RenamingToADuplicateIsRefusedAndToANewNameMovesTheSelection) {
    ASSERT_TRUE(session.addUser("Ann"));
    ASSERT_TRUE(session.switchUser("Zerbu"));
    open();
    dialog->list()->setCurrentRow(0);
    ASSERT_EQ(selected(), QStringLiteral("Ann"));

    SeenMessage seen;
    QString title;
    typeName(QStringLiteral("Zerbu"), &title);
    answerMessage(QMessageBox::Ok, &seen);
    press(QStringLiteral("Rename..."));
    EXPECT_EQ(title, QStringLiteral("Rename User"));
    EXPECT_EQ(seen.caption, QStringLiteral("Rename User"));
    EXPECT_EQ(listed(), "Ann|Zerbu");

    typeName(QStringLiteral("Maya"));
    press(QStringLiteral("Rename..."));
    EXPECT_EQ(listed(), "Maya|Zerbu");
    EXPECT_EQ(selected(), QStringLiteral("Maya"));
    EXPECT_EQ(session.openUserName(), "Zerbu");
}

// A screen reader selects an entry without moving the list's current item: Delete and Rename
// act on the entry it shows and announces selected, never on the current one.
TEST_F(UsersDialogTest, DeleteAndRenameActOnTheEntrySelectedThroughAccessibility) {
    ASSERT_TRUE(session.addUser("Ann"));
    ASSERT_TRUE(session.addUser("Lee"));  // open and remembered: the current item
    open();
    ASSERT_EQ(dialog->list()->currentItem()->text(), QStringLiteral("Lee"));

    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(dialog->list());
    ASSERT_NE(list, nullptr);
    ASSERT_NE(list->tableInterface(), nullptr);
    ASSERT_TRUE(list->tableInterface()->selectRow(0));  // Ann
    ASSERT_EQ(selected(), QStringLiteral("Ann"));
    ASSERT_EQ(dialog->list()->currentItem()->text(), QStringLiteral("Lee"));

    SeenMessage seen;
    answerMessage(QMessageBox::No, &seen);
    press(QStringLiteral("Delete"));
    EXPECT_EQ(seen.text, QStringLiteral("Delete the user name and ALL ASSOCIATED DATA of 'Ann'?"));

    typeName(QStringLiteral("Anne"));
    press(QStringLiteral("Rename..."));
    EXPECT_EQ(listed(), "Anne|Lee|Zerbu");

    ASSERT_TRUE(list->tableInterface()->selectRow(0));
    answerMessage(QMessageBox::Yes);
    press(QStringLiteral("Delete"));
    EXPECT_EQ(listed(), "Lee|Zerbu");
    EXPECT_EQ(session.openUserName(), "Lee");
}

TEST_F(UsersDialogTest, OkOpensTheSelectedUserAndPreselectsTheRememberedOne) {
    ASSERT_TRUE(session.addUser("Ann"));
    ASSERT_TRUE(session.addUser("Lee"));
    settings.setCurrentUserName("ann");  // matched ignoring case
    open();
    EXPECT_EQ(selected(), QStringLiteral("Ann"));

    QTest::keyClick(dialog->list(), Qt::Key_Down);
    EXPECT_EQ(selected(), QStringLiteral("Lee"));
    QTest::keyClick(dialog.get(), Qt::Key_Escape);  // Escape acts as OK
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(session.openUserName(), "Lee");
}

}  // namespace
}  // namespace nutrovex
