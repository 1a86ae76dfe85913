#include <gtest/gtest.h>

#include <memory>

#include "calc/Goals.h"
#include "core/UserProfile.h"
#include "forms/profile/TargetsForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using Command = TargetsForm::Command;
using Field = TargetsForm::Field;

class TargetsFormTest : public LogbookFixture {
protected:
    TargetsForm form(std::string failure = {}) { return TargetsForm(targets, failure, cursor); }

    // A day of 21 November 2002 with a food budget of 2000 calories (BMR 3000, goal 1000 a day).
    void dayWithBudget() {
        UserProfile& p = store.profile;
        p.setHeight(70.0f);
        (void)p.setAge(30);
        p.setStartWeight(200.0f);
        p.setGoalWeight(190.0f);
        p.setGoalDate(steppedDate(store.today(), 35));
        DayRecord& day = addDay(21, 11, 2002);
        day.rawFields().weight = 198.0f;
        day.rawFields().level = 2;
        day.rawFields().bmr = 3000;
        (void)cursor.setCurrentDate(dmy(21, 11, 2002));
    }

    static void type(TargetsForm& f, TargetNutrient n, const char* amount, const char* kind = "g") {
        (void)f.edit(n, Field::Amount, amount);
        (void)f.edit(n, Field::Kind, kind);
    }

    MacroTargets targets;
};

TEST_F(TargetsFormTest, SavesATypedSetAndShowsItAgain) {
    TargetsForm f = form();
    type(f, TargetNutrient::Protein, "30", "%");
    type(f, TargetNutrient::Carbohydrate, "45", "%");
    type(f, TargetNutrient::Fat, "25", "%");
    type(f, TargetNutrient::Fiber, "30.25");
    type(f, TargetNutrient::SaturatedFat, "20");
    const Outcome saved = f.command(Command::Save);
    EXPECT_FALSE(saved.message);
    EXPECT_TRUE(saved.notices.targets);
    EXPECT_EQ(targets.of(TargetNutrient::Protein), (MacroTarget{MacroTarget::Kind::Percent, 30.0}));
    EXPECT_EQ(targets.of(TargetNutrient::Fiber), (MacroTarget{MacroTarget::Kind::Grams, 30.3}));
    EXPECT_EQ(targets.of(TargetNutrient::SaturatedFat),
              (MacroTarget{MacroTarget::Kind::Grams, 20.0}));

    // Saving what is already stored changes nothing.
    EXPECT_EQ(f.command(Command::Save), Outcome{});
    const TargetsView v = form().view();
    EXPECT_EQ(v.rows[0].amount, "30");
    EXPECT_TRUE(v.rows[0].percent);
    EXPECT_EQ(v.rows[3].amount, "30.3");
    EXPECT_FALSE(v.rows[3].percentAllowed);
}

TEST_F(TargetsFormTest, RefusesWhatTheRulesRefuseAndKeepsTheStoredSet) {
    struct Case {
        const char* protein;
        const char* proteinKind;
        const char* fiber;
        const char* fiberKind;
        const char* message;
    };
    const Case cases[] = {
        {"30", "%", "", "g",
         "Protein, carbohydrate and fat add up to 80.0% of the food budget; as percentages they "
         "must add up to 100%."},
        {"12a", "g", "", "g", "Protein: type a number, or leave the line empty for no target."},
        {"-5", "g", "", "g", "Protein cannot be a negative number of grams."},
        {"10000", "g", "", "g", "Protein can be at most 9999 g."},
        {"20", "g", "12345", "g", "Fiber can be at most 9999 g."},
    };
    targets.of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 25.0};
    const MacroTargets before = targets;
    for (const Case& c : cases) {
        TargetsForm f = form();
        type(f, TargetNutrient::Protein, c.protein, c.proteinKind);
        type(f, TargetNutrient::Carbohydrate, "50", "%");
        type(f, TargetNutrient::Fat, "", "g");
        type(f, TargetNutrient::Fiber, c.fiber, c.fiberKind);
        if (std::string(c.proteinKind) == "%") {
            type(f, TargetNutrient::Fat, "0", "%");
        }
        const Outcome refused = f.command(Command::Save);
        ASSERT_TRUE(refused.message) << c.protein;
        EXPECT_EQ(refused.message->text, c.message);
        EXPECT_EQ(refused.message->caption, "Targets");
        EXPECT_FALSE(refused.notices.any());
        EXPECT_EQ(targets, before);
    }
}

TEST_F(TargetsFormTest, FiberStaysInGramsWhateverTheListSays) {
    TargetsForm f = form();
    type(f, TargetNutrient::Fiber, "30", "%");
    EXPECT_FALSE(f.view().rows[3].percent);
    EXPECT_FALSE(f.command(Command::Save).message);
    EXPECT_EQ(targets.of(TargetNutrient::Fiber)->kind, MacroTarget::Kind::Grams);
}

TEST_F(TargetsFormTest, EquivalentsOnTheCurrentDaysBudget) {
    dayWithBudget();
    TargetsForm f = form();
    type(f, TargetNutrient::Protein, "30", "%");  // 600 cal at 4 a gram
    type(f, TargetNutrient::Fat, "50");           // 450 cal of 2000
    type(f, TargetNutrient::Fiber, "25");
    const TargetsView v = f.view();
    EXPECT_EQ(v.budgetLine, "The food budget of Thursday November 21, 2002 is 2000 calories.");
    EXPECT_EQ(v.rows[0].equivalent, "= 150.0 g");
    EXPECT_EQ(v.rows[2].equivalent, "= 22.5%");
    EXPECT_EQ(v.rows[1].equivalent, "");  // nothing typed
    EXPECT_EQ(v.rows[3].equivalent, "");  // fibre has no share

    // Without a budget (no weight on the day) a share has no grams.
    (void)cursor.setCurrentDate(dmy(22, 11, 2002));
    const TargetsView none = f.view();
    EXPECT_EQ(none.rows[0].equivalent, "");
    EXPECT_NE(none.budgetLine.find("no food budget"), std::string::npos);
}

TEST_F(TargetsFormTest, ClearAndRevert) {
    targets.of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Grams, 120.0};
    TargetsForm f = form();
    (void)f.command(Command::Clear);
    EXPECT_EQ(f.view().rows[0].amount, "");
    (void)f.command(Command::Revert);
    EXPECT_EQ(f.view().rows[0].amount, "120");

    // Clearing and saving removes every target.
    (void)f.command(Command::Clear);
    EXPECT_TRUE(f.command(Command::Save).notices.targets);
    EXPECT_FALSE(targets.any());
}

TEST_F(TargetsFormTest, AFileNotReadWholeIsShownAndNothingChanges) {
    TargetsForm f = form("Targets.json: byte 12: a field given twice");
    const TargetsView v = f.view();
    EXPECT_FALSE(v.editable);
    EXPECT_NE(v.notice.find("Targets.json: byte 12: a field given twice"), std::string::npos);
    type(f, TargetNutrient::Protein, "100");
    EXPECT_EQ(f.view().rows[0].amount, "");
    EXPECT_EQ(f.command(Command::Save), Outcome{});
    EXPECT_FALSE(targets.any());
}

}  // namespace
}  // namespace nutrovex
