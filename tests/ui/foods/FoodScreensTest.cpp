#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolButton>

#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "ui/ScreenSession.h"
#include "ui/controls/NumericEdit.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodFieldsWidget.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/foods/MealsDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::whenModal;

// A catalogue food measured per reference serving.
FoodItem catalogueFood(const char* name, ServingQuantity reference, float calories,
                       float carbohydrate) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setReference(reference);
    f.setServing(reference);
    f.setNutrient(kCalories, calories);
    f.setNutrient(kCarbohydrate, carbohydrate);
    f.setNutrient(kProtein, 1.0f);
    return f;
}

std::vector<std::string> names(const FoodList& list) {
    std::vector<std::string> out;
    for (const FoodItem& f : list) {
        out.push_back(f.name.str());
    }
    return out;
}

void showActive(QWidget& w) {
    w.show();
    // Another screen of the same test may still hold the activation; this one takes it.
    QApplication::setActiveWindow(&w);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
}

// The menu entry reached through the given titles, as a person opens the menus.
QAction* menuEntry(QWidget& screen, const QStringList& path) {
    QList<QAction*> actions = screen.findChild<QMenuBar*>()->actions();
    QAction* found = nullptr;
    for (const QString& title : path) {
        found = nullptr;
        for (QAction* a : actions) {
            if (a->text() == title) {
                found = a;
                break;
            }
        }
        if (!found) {
            ADD_FAILURE() << "no menu entry " << title.toStdString();
            return nullptr;
        }
        if (found->menu()) {
            actions = found->menu()->actions();
        }
    }
    return found;
}

// Presses the button of that text with the keyboard: Tab to it, then Space.
void pressButton(QWidget& screen, const QString& text) {
    QAbstractButton* button = nullptr;
    for (QAbstractButton* b : screen.findChildren<QAbstractButton*>()) {
        if (b->text() == text && b->window() == &screen) {
            button = b;
        }
    }
    ASSERT_NE(button, nullptr) << text.toStdString();
    for (int i = 0; i < 60 && QApplication::focusWidget() != button; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    ASSERT_EQ(QApplication::focusWidget(), button) << text.toStdString() << " out of Tab's reach";
    QTest::keyClick(button, Qt::Key_Space);
}

// Replaces the field's text as a person does: focus, select all, type over (or clear it).
void typeInto(QLineEdit* field, const QString& text) {
    field->setFocus();
    field->selectAll();
    if (text.isEmpty()) {
        field->del();
    } else {
        QTest::keyClicks(field, text);
    }
}

// Noon on 10 March 2026: a small catalogue (pies among the sweets, fresh fruit, breads) and a
// day of four fruits and a bagel.
class FoodScreens : public test::ScreenSession {
protected:
    FoodScreens() : ScreenSession(at(10, 3, 2026, 12)) {}

    void SetUp() override {
        ScreenSession::SetUp();
        FoodCatalogue& c = session.catalogue();
        const Position pies = addCategory(c, 0, "Pies");
        (void)addFoodItem(c, 0, pies,
                          catalogueFood("Apple Pie", {1.0f, ServingUnit::Item, 0}, 320, 45));
        (void)addFoodItem(c, 0, pies,
                          catalogueFood("Pumpkin Pie", {1.0f, ServingUnit::Item, 0}, 290, 38));
        const Position fresh = addCategory(c, 4, "Fresh");
        (void)addFoodItem(c, 4, fresh,
                          catalogueFood("Apple", {100.0f, ServingUnit::Gram, 0}, 52, 13.8f));
        (void)addFoodItem(c, 4, fresh,
                          catalogueFood("Banana", {1.0f, ServingUnit::Item, 0}, 105, 27));
        const Position breads = addCategory(c, 5, "Breads");
        (void)addFoodItem(c, 5, breads,
                          catalogueFood("Bagel", {1.0f, ServingUnit::Item, 0}, 245, 48));

        (void)session.days().ensureCurrentDay();
        uint32_t key = 1;
        for (const char* name : {"Fig", "Kiwi", "Mango", "Plum"}) {
            FoodItem f = catalogueFood(name, {1.0f, ServingUnit::Item, 0}, 50, 12);
            f.group = 4;
            f.meal = 1;
            f.key.value = key++;
            (void)insertLoggedFood(today(), f, 4, kSortByMeal);
        }
        FoodItem bagel = catalogueFood("Bagel", {1.0f, ServingUnit::Item, 0}, 245, 48);
        bagel.group = 5;
        bagel.key.value = key++;
        (void)insertLoggedFood(today(), bagel, 5, kSortByMeal);
        session.store().header.keyCounter.value = key;
    }

    DayRecord& today() { return *session.days().currentRecord(); }
    FoodRunState& run() { return session.foodRunState(); }
    MealsForm mealsForm() { return MealsForm(session.catalogue(), session.days(), run()); }
    FoodGridForm gridForm(int group) {
        return FoodGridForm(session.catalogue(), session.days(), run(), group);
    }
    LogFoodForm logFoodForm(int group) {
        return LogFoodForm(session.catalogue(), session.days(), run(), group);
    }
    int foodRows(const FoodGridDialog& grid) { return grid.form().view().rows.foodCount; }
};

TEST_F(FoodScreens, AFoodLoggedInOuncesShowsOnTheMealsScreenAndInTheDayTotals) {
    MealsDialog meals(mealsForm(), notifier, nullptr);
    showActive(meals);
    EXPECT_EQ(meals.groupValue(4, 0), QStringLiteral("200"));
    EXPECT_EQ(meals.summaryValue(0, 0), QStringLiteral("445"));

    LogFoodDialog log(logFoodForm(4), notifier, &meals);
    showActive(log);
    EXPECT_EQ(log.foodList()->currentText(), QStringLiteral("Apple"));
    FoodFieldsWidget* fields = log.fields();
    EXPECT_EQ(fields->unitList()->currentText(), QStringLiteral("g"));
    EXPECT_EQ(fields->caloriesEdit()->text(), QStringLiteral("52"));
    EXPECT_EQ(fields->mealList()->currentText(), QStringLiteral("Lunch"));  // noon

    fields->unitList()->setFocus();
    QTest::keyClick(fields->unitList(), Qt::Key_Home);  // "oz", first of the weights
    EXPECT_EQ(fields->unitList()->currentText(), QStringLiteral("oz"));
    typeInto(fields->amountEdit(), QStringLiteral("2"));
    QTest::keyClick(fields->amountEdit(), Qt::Key_Tab);
    // Two ounces are 56.7 g of a food of 52 calories per 100 g.
    EXPECT_EQ(fields->caloriesEdit()->text(), QStringLiteral("29"));

    QTest::mouseClick(log.logButton(), Qt::LeftButton);
    EXPECT_EQ(log.result(), QDialog::Accepted);
    ASSERT_EQ(today().group(4).size(), 5u);
    const FoodItem& apple = today().group(4)[log.form().result().position];
    EXPECT_EQ(apple.name.str(), "Apple");
    EXPECT_EQ(apple.serving.unit, ServingUnit::Ounce);
    EXPECT_FLOAT_EQ(apple.serving.amount, 2.0f);
    EXPECT_EQ(apple.meal, 1);
    EXPECT_EQ(today().allFoods().size(), 6u);

    // The meals screen heard of the change; the day's calories in follow.
    EXPECT_EQ(meals.groupValue(4, 0), QStringLiteral("229"));
    EXPECT_EQ(meals.summaryValue(0, 0), QStringLiteral("474"));
    EXPECT_EQ(session.days().currentDay()->caloriesIn, 474u);
    EXPECT_TRUE(session.userDataModified());
}

// The summary shows the day against the person's targets, from the moment they are set.
TEST_F(FoodScreens, TheMealsSummaryShowsTheDayAgainstTheTargets) {
    MealsDialog meals(MealsForm(session.catalogue(), session.days(), run(), &session.targets()),
                      notifier, nullptr);
    showActive(meals);
    EXPECT_FALSE(meals.targetsLabel()->isVisible());  // none set

    session.targets().of(TargetNutrient::Carbohydrate) =
        MacroTarget{MacroTarget::Kind::Grams, 100.0};
    notifier.apply(Notices{.dataChanged = true});
    // Four fruits of 12 g and a bagel of 48 g.
    EXPECT_TRUE(meals.targetsLabel()->isVisible());
    EXPECT_EQ(meals.targetsLabel()->text(),
              QStringLiteral("Carbohydrate: 96.0 g of 100.0 g, 4.0 g left"));
}

TEST_F(FoodScreens, ACategoryAndAFoodMadeInsideLogFoodAreSelectedAndLogged) {
    LogFoodDialog log(logFoodForm(3), notifier, nullptr);  // vegetables: no category yet
    showActive(log);
    EXPECT_FALSE(log.categoryList()->isEnabled());
    EXPECT_FALSE(log.logButton()->isEnabled());

    whenModal<CategoryNameDialog>([](CategoryNameDialog* d) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("New Category"));
        // OK waits for a name; Enter in the empty field does nothing.
        EXPECT_FALSE(d->okButton()->isEnabled());
        QTest::keyClick(d->nameField(), Qt::Key_Return);
        EXPECT_TRUE(d->isVisible());
        QTest::keyClicks(d->nameField(), QStringLiteral("G"));
        EXPECT_TRUE(d->okButton()->isEnabled());
        QTest::keyClick(d->nameField(), Qt::Key_Backspace);
        EXPECT_FALSE(d->okButton()->isEnabled());
        QTest::keyClicks(d->nameField(), QStringLiteral("Greens"));
        QTest::keyClick(d->nameField(), Qt::Key_Return);
    });
    menuEntry(log, {QStringLiteral("&Edit"), QStringLiteral("&New"), QStringLiteral("&Category")})
        ->trigger();
    EXPECT_TRUE(log.categoryList()->isEnabled());
    EXPECT_EQ(log.categoryList()->currentText(), QStringLiteral("Greens"));

    whenModal<FoodItemDialog>([](FoodItemDialog* d) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("New Food Item"));
        EXPECT_EQ(d->groupList()->currentText(), QStringLiteral("Vegetables"));
        EXPECT_EQ(d->categoryList()->currentText(), QStringLiteral("Greens"));
        EXPECT_FALSE(d->okButton()->isEnabled());  // no name yet
        QTest::keyClicks(d->nameField(), QStringLiteral("Spinach"));
        EXPECT_TRUE(d->okButton()->isEnabled());
        typeInto(d->fields()->caloriesEdit(), QStringLiteral("23"));
        QTest::mouseClick(d->okButton(), Qt::LeftButton);
    });
    menuEntry(log, {QStringLiteral("&Edit"), QStringLiteral("&New"), QStringLiteral("Food &Item")})
        ->trigger();
    EXPECT_EQ(log.foodList()->currentText(), QStringLiteral("Spinach"));
    EXPECT_TRUE(session.catalogueModified());

    QTest::mouseClick(log.logButton(), Qt::LeftButton);
    ASSERT_EQ(today().group(3).size(), 1u);
    EXPECT_EQ(today().group(3)[0].name.str(), "Spinach");
    EXPECT_FLOAT_EQ(today().group(3)[0].nutrients[kCalories], 23.0f);
}

TEST_F(FoodScreens, AnInvalidValueIsRefusedWithTheFocusOnItsField) {
    const struct {
        const char* what;
        std::function<QLineEdit*(FoodFieldsWidget*)> field;
        QString typed;
    } cases[] = {
        {"serving of 0.001", [](FoodFieldsWidget* f) { return f->amountEdit(); },
         QStringLiteral("0.001")},
        {"empty calories", [](FoodFieldsWidget* f) { return f->caloriesEdit(); }, QString()},
        {"empty fat", [](FoodFieldsWidget* f) { return f->gramsEdit(kFat); }, QString()},
    };
    for (const auto& c : cases) {
        LogFoodDialog log(logFoodForm(4), notifier, nullptr);
        showActive(log);
        QLineEdit* field = c.field(log.fields());
        typeInto(field, c.typed);
        test::SeenMessage shown;
        answerMessage(QMessageBox::Ok, &shown);
        QTest::mouseClick(log.logButton(), Qt::LeftButton);
        EXPECT_EQ(shown.text, QStringLiteral("You have an invalid nutrient value.")) << c.what;
        EXPECT_TRUE(log.isVisible()) << c.what;
        EXPECT_EQ(log.focusWidget(), field) << c.what;
        EXPECT_EQ(today().group(4).size(), 4u) << c.what;
    }

    // The same rule in Insert Food, under its own caption.
    FoodItemDialog insert(
        FoodItemForm::insertIntoDay(session.catalogue(), 5, 0, 0, session.days(), run().view),
        notifier, nullptr);
    showActive(insert);
    EXPECT_TRUE(insert.nameField()->isReadOnly());
    typeInto(insert.fields()->gramsEdit(kProtein), QString());
    test::SeenMessage refused;
    answerMessage(QMessageBox::Ok, &refused);
    QTest::mouseClick(insert.okButton(), Qt::LeftButton);
    EXPECT_EQ(refused.caption, QStringLiteral("Insert Food"));
    EXPECT_EQ(insert.focusWidget(), insert.fields()->gramsEdit(kProtein));
}

TEST_F(FoodScreens, DeletingThreeRowsTakesTheirTwinsOutOfAllFoods) {
    FoodGridDialog fruit(gridForm(4), notifier, nullptr);
    showActive(fruit);
    CFoodGridCtrl* g = fruit.grid();
    g->setFocus();
    QTest::keyClick(g, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(g, Qt::Key_Down, Qt::ShiftModifier);  // Fig, Kiwi, Mango

    test::SeenMessage question;
    answerMessage(QMessageBox::No, &question);
    QTest::keyClick(g, Qt::Key_Delete);
    EXPECT_EQ(question.text,
              QStringLiteral("Are you sure you want to delete the selected food items"));
    EXPECT_EQ(today().group(4).size(), 4u);

    showActive(fruit);  // back from the question
    QTest::keyClick(g, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(g, Qt::Key_Up, Qt::ShiftModifier);  // the same three again
    answerMessage(QMessageBox::Yes);
    QTest::keyClick(g, Qt::Key_Delete);
    EXPECT_EQ(names(today().group(4)), (std::vector<std::string>{"Plum"}));

    std::vector<std::string> shown;
    for (const LogRow& row : gridForm(kAllFoodsGroup).view().rows.rows) {
        if (row.kind == LogRowKind::Food) {
            shown.push_back(row.text);
        }
    }
    EXPECT_EQ(shown, (std::vector<std::string>{"Bagel", "Plum"}));
}

TEST_F(FoodScreens, FindingPieSelectsTheChosenFoodInLogFood) {
    LogFoodDialog log(logFoodForm(4), notifier, nullptr);
    showActive(log);
    QStringList listed;
    whenModal<FindFoodDialog>([&listed](FindFoodDialog* find) {
        QTest::keyClicks(find->findField(), QStringLiteral("zzz"));
        test::SeenMessage nothing;
        answerMessage(QMessageBox::Ok, &nothing);
        QTest::keyClick(find->findField(), Qt::Key_Return);
        EXPECT_EQ(nothing.text, QStringLiteral("No matching food items found."));

        typeInto(find->findField(), QStringLiteral("pie"));
        QTest::keyClick(find->findField(), Qt::Key_Return);
        for (int i = 0; i < find->results()->count(); ++i) {
            listed << find->results()->item(i)->text();
        }
        QTest::keyClick(find->results(), Qt::Key_Down);  // the second
        QTest::keyClick(find->results(), Qt::Key_Return);
    });
    pressButton(log, QStringLiteral("&Find"));

    EXPECT_EQ(listed, (QStringList{QStringLiteral("Apple Pie"), QStringLiteral("Pumpkin Pie")}));
    EXPECT_EQ(log.groupList()->currentText(), QStringLiteral("Sweets, Fats, Oils"));
    EXPECT_EQ(log.categoryList()->currentText(), QStringLiteral("Pies"));
    EXPECT_EQ(log.foodList()->currentText(), QStringLiteral("Pumpkin Pie"));
    EXPECT_EQ(log.fields()->caloriesEdit()->text(), QStringLiteral("290"));
}

TEST_F(FoodScreens, RecentFoodsAreLoggedAgainWithTheirServing) {
    today().group(4)[0].serving.amount = 3.0f;  // Fig, as last logged
    today().allFoods().clear();
    for (int g = 0; g < kFoodGroupCount; ++g) {
        for (const FoodItem& f : today().group(g)) {
            today().allFoods().push_back(f);
        }
    }
    session.days().nextDay();
    LogFoodDialog log(logFoodForm(5), notifier, nullptr);
    showActive(log);
    ASSERT_EQ(log.recentList()->count(), 5);
    log.recentList()->setFocus();
    const int fig = log.recentList()->findText(QStringLiteral("Fig, 3.00 item"));
    ASSERT_GE(fig, 0);
    log.recentList()->setCurrentIndex(fig);
    pressButton(log, QStringLiteral("Lo&g Again"));

    EXPECT_EQ(log.result(), QDialog::Accepted);
    const DayRecord* tomorrow = session.days().currentRecord();
    ASSERT_NE(tomorrow, nullptr);
    ASSERT_EQ(names(tomorrow->group(4)), (std::vector<std::string>{"Fig"}));
    EXPECT_FLOAT_EQ(tomorrow->group(4)[0].serving.amount, 3.0f);
    EXPECT_EQ(tomorrow->group(4)[0].meal, 1);  // the meal of the hour
}

// Every focusable control of a screen carries an accessible name.
void expectNamed(QWidget& screen, const char* which) {
    for (QWidget* w : screen.findChildren<QWidget*>()) {
        if (w->focusPolicy() & Qt::TabFocus && w->isVisibleTo(&screen) &&
            !qobject_cast<QMenuBar*>(w) && w->parent() != nullptr &&
            !w->inherits("QComboBoxPrivateContainer") && !w->inherits("QAbstractItemView") &&
            !w->inherits("QScrollBar")) {
            EXPECT_FALSE(w->accessibleName().isEmpty())
                << which << ": " << w->metaObject()->className();
        }
    }
}

TEST_F(FoodScreens, EveryScreenIsReachedAndLeftWithTheKeyboard) {
    MealsDialog meals(mealsForm(), notifier, nullptr);
    showActive(meals);
    expectNamed(meals, "meals");
    pressButton(meals, QStringLiteral("Toggle &Nutrients"));
    EXPECT_EQ(meals.findChildren<QLabel*>().size() > 0, true);
    EXPECT_EQ(meals.groupValue(4, 0), QStringLiteral("0.0g"));  // fiber of the fruit
    bool sawGrid = false;
    whenModal<FoodGridDialog>([&sawGrid](FoodGridDialog* grid) {
        sawGrid = true;
        QApplication::setActiveWindow(grid);
        expectNamed(*grid, "grid");
        EXPECT_EQ(grid->windowTitle(), QStringLiteral("Summary (All Foods)"));
        bool sawLog = false;
        whenModal<LogFoodDialog>([&sawLog](LogFoodDialog* log) {
            sawLog = true;
            QApplication::setActiveWindow(log);
            expectNamed(*log, "log food");
            // From the group list, Tab walks the lists and then the values in order.
            log->groupList()->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), log->categoryList());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), log->foodList());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), log->fields()->amountEdit());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        });
        QTest::keyClick(grid->grid(), Qt::Key_Home, Qt::ControlModifier);  // the header row
        QTest::keyClick(grid->grid(), Qt::Key_F2);  // not a food: Insert Food Item
        EXPECT_TRUE(sawLog);
        QTest::keyClick(grid->grid(), Qt::Key_Escape);
    });
    pressButton(meals, QStringLiteral("A&ll Foods"));
    EXPECT_TRUE(sawGrid);
    EXPECT_EQ(today().allFoods().size(), 5u);  // Escape logged nothing
    QTest::keyClick(&meals, Qt::Key_Escape);
    EXPECT_FALSE(meals.isVisible());
    EXPECT_EQ(meals.result(), QDialog::Accepted);

    FoodGridDialog fruit(gridForm(4), notifier, nullptr);
    showActive(fruit);
    fruit.grid()->setFocus();
    whenModal<FoodItemDialog>([](FoodItemDialog* edit) {
        expectNamed(*edit, "edit entry");
        EXPECT_EQ(edit->nameField()->text(), QStringLiteral("Fig"));
        edit->fields()->mealList()->setFocus();
        QTest::keyClick(edit->fields()->mealList(), Qt::Key_End);  // Snack
        QTest::keyClick(edit->fields()->mealList(), Qt::Key_Return);
    });
    QTest::keyClick(fruit.grid(), Qt::Key_F2);
    EXPECT_EQ(today().group(4).back().name.str(), "Fig");
    EXPECT_EQ(today().group(4).back().meal, 3);

    CategoryNameDialog category(CategoryNameForm(session.catalogue(), 4, 0, true), notifier,
                                nullptr);
    showActive(category);
    expectNamed(category, "category");
    EXPECT_EQ(category.windowTitle(), QStringLiteral("Edit Category"));
    QTest::keyClick(category.nameField(), Qt::Key_Escape);
    EXPECT_EQ(category.result(), QDialog::Rejected);
}

TEST_F(FoodScreens, LogFoodReachedFromMealsOpensTheCatalogue) {
    QWidget* openedFrom = nullptr;
    MealsDialog meals(mealsForm(), notifier, nullptr,
                      FoodOpeners([&openedFrom](QWidget* parent) { openedFrom = parent; }));
    showActive(meals);
    QWidget* logScreen = nullptr;
    whenModal<FoodGridDialog>([&logScreen](FoodGridDialog* grid) {
        QApplication::setActiveWindow(grid);
        whenModal<LogFoodDialog>([&logScreen](LogFoodDialog* log) {
            logScreen = log;
            QAction* catalogue =
                menuEntry(*log, {QStringLiteral("&Options"), QStringLiteral("&Catalogue...")});
            ASSERT_NE(catalogue, nullptr);
            EXPECT_TRUE(catalogue->isEnabled());
            catalogue->trigger();
            QTest::keyClick(log, Qt::Key_Escape);
        });
        QTest::keyClick(grid->grid(), Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClick(grid->grid(), Qt::Key_F2);
        QTest::keyClick(grid->grid(), Qt::Key_Escape);
    });
    meals.openGroup(4);
    ASSERT_NE(logScreen, nullptr);
    EXPECT_EQ(openedFrom, logScreen);  // the catalogue opens over Log Food
}

}  // namespace
}  // namespace nutrovex
