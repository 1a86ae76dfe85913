#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <fstream>
#include <sstream>

#include "storage/TargetsFile.h"
#include "ui/ScreenSession.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/TargetsDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

class TargetsDialogTest : public test::ScreenSession {
protected:
    std::filesystem::path targetsFile() {
        return session.store().userFolderPath / kTargetsFileName;
    }
    static std::string contents(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    TargetsForm form() {
        return TargetsForm(session.targets(),
                           session.targetsReadWhole() ? std::string() : session.targetsFailure(),
                           session.days());
    }
    static void typeLine(TargetsDialog* d, TargetNutrient n, const QString& amount, bool percent) {
        QLineEdit* edit = d->amountEdit(n);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, amount);
        QComboBox* kind = d->kindList(n);
        if (!kind->isEnabled()) {  // fibre: grams only
            return;
        }
        QTest::keyClick(edit, Qt::Key_Tab);  // onto its unit list
        EXPECT_EQ(d->focusWidget(), kind);
        QTest::keyClick(kind, percent ? Qt::Key_Down : Qt::Key_Up);
    }
};

// From the goals screen: shares that do not add up to 100 are refused with the rule, and the
// screen stays; once they do, OK stores them in the person's Targets.json.
TEST_F(TargetsDialogTest, TypedTargetsAreCheckedAndSavedOnOk) {
    GoalsDialog goals(GoalsForm(session.store().profile, clock), notifier, nullptr, {},
                      [this](QWidget* parent) {
                          TargetsDialog dialog(form(), notifier, parent);
                          dialog.exec();
                      });
    goals.show();
    ASSERT_TRUE(goals.targetsButton()->isEnabled());

    SeenMessage refusal;
    bool closedOnFirstOk = true;
    whenModal<TargetsDialog>([&](TargetsDialog* d) {
        typeLine(d, TargetNutrient::Protein, QStringLiteral("30"), true);
        typeLine(d, TargetNutrient::Carbohydrate, QStringLiteral("40"), true);
        typeLine(d, TargetNutrient::Fat, QStringLiteral("20"), true);
        typeLine(d, TargetNutrient::Fiber, QStringLiteral("28"), false);
        answerMessage(QMessageBox::Ok, &refusal);
        d->okButton()->click();
        closedOnFirstOk = !d->isVisible();
        // Put right: fat a 30% share, and OK again.
        typeLine(d, TargetNutrient::Fat, QStringLiteral("30"), true);
        d->okButton()->click();
    });
    goals.targetsButton()->click();

    EXPECT_FALSE(closedOnFirstOk);
    EXPECT_EQ(refusal.text, QStringLiteral("Protein, carbohydrate and fat add up to 90.0% of the "
                                           "food budget; as percentages they must add up to "
                                           "100%."));
    EXPECT_EQ(refusal.caption, QStringLiteral("Targets"));
    MacroTargets saved;
    ASSERT_TRUE(loadTargets(session.store().userFolderPath, saved).status);
    EXPECT_EQ(saved.of(TargetNutrient::Protein), (MacroTarget{MacroTarget::Kind::Percent, 30.0}));
    EXPECT_EQ(saved.of(TargetNutrient::Carbohydrate),
              (MacroTarget{MacroTarget::Kind::Percent, 40.0}));
    EXPECT_EQ(saved.of(TargetNutrient::Fat), (MacroTarget{MacroTarget::Kind::Percent, 30.0}));
    EXPECT_EQ(saved.of(TargetNutrient::Fiber), (MacroTarget{MacroTarget::Kind::Grams, 28.0}));
    EXPECT_FALSE(saved.of(TargetNutrient::SaturatedFat));
}

// A Targets.json that could not be read whole is named on the screen, nothing can be typed, and
// closing the screen leaves the file exactly as it was.
TEST_F(TargetsDialogTest, AFileNotReadWholeIsShownAndKept) {
    const std::string damaged =
        R"({"version": 1, "protein": {"grams": 100}, "protein": {"grams": 1}})";
    {
        std::ofstream out(targetsFile(), std::ios::binary);
        out << damaged;
    }
    const std::string me(session.openUserName());
    (void)session.switchUser(me);  // loads the person's files again; this one does not read
    ASSERT_FALSE(session.targetsReadWhole());

    auto dialog = std::make_unique<TargetsDialog>(form(), notifier, nullptr);
    dialog->show();
    EXPECT_TRUE(dialog->notice()->isVisible());
    EXPECT_TRUE(dialog->notice()->text().contains(QStringLiteral("Targets.json")));
    EXPECT_FALSE(dialog->amountEdit(TargetNutrient::Protein)->isEnabled());
    dialog->okButton()->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(contents(targetsFile()), damaged);
}

}  // namespace
}  // namespace nutrovex
