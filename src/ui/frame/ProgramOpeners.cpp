#include "ui/frame/ProgramOpeners.h"

#include <QPointer>

#include <memory>

#include "foods/CatalogueOps.h"
#include "ui/TextConvert.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/HistoricChartDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/MealsDialog.h"
#include "ui/logbook/LogbookDialog.h"

namespace nutrovex {

namespace {

// What the catalogue screen's openers share: the catalogue's clipboard for the whole run, and
// where the last food logged from the catalogue went, so the day's food grid can show it.
struct CatalogueLinks {
    CatalogueClipboard clipboard;
    int loggedGroup = 0;
    QPointer<QWidget> loggedFrom;
};

CatalogueOpeners catalogueOpeners(SessionNotifier& notifier,
                                  const std::shared_ptr<CatalogueLinks>& links) {
    CatalogueOpeners openers;
    openers.insertFood = [&notifier, links](QWidget* parent,
                                            const TreePlace& food) -> std::optional<Position> {
        InsertFoodDialog dialog(notifier, parent, food.group, food.category, food.food);
        if (dialog.exec() != QDialog::Accepted || !dialog.result().done()) {
            return std::nullopt;
        }
        links->loggedGroup = dialog.result().group;
        links->loggedFrom = parent;
        return dialog.result().position;
    };
    openers.selectInFoodGrid = [&notifier, links](Position presented) {
        FoodGridDialog grid(notifier, links->loggedFrom, links->loggedGroup, presented);
        grid.exec();
    };
    openers.editFood = [&notifier](QWidget* parent,
                                   const TreePlace& food) -> std::optional<TreePlace> {
        EditFoodItemDialog dialog(notifier, parent, food.group, food.category, food.food);
        if (dialog.exec() != QDialog::Accepted || !dialog.result().done()) {
            return std::nullopt;
        }
        return TreePlace::ofFood(food.group, food.category, dialog.result().position);
    };
    openers.newFood = [&notifier](QWidget* parent,
                                  const TreePlace& at) -> std::optional<TreePlace> {
        NewFoodItemDialog dialog(notifier, parent, at.group,
                                 at.category == kNoPosition ? -1 : at.category);
        if (dialog.exec() != QDialog::Accepted || !dialog.result().done()) {
            return std::nullopt;
        }
        const FormResult& made = dialog.result();
        return TreePlace::ofFood(made.group, made.category, made.position);
    };
    openers.newCategory = [&notifier](QWidget* parent, int group) -> std::optional<TreePlace> {
        CategoryNameDialog dialog(notifier, parent, group, kNoPosition, false);
        if (dialog.exec() != QDialog::Accepted || dialog.position() == kNoPosition) {
            return std::nullopt;
        }
        return TreePlace::ofCategory(group, dialog.position());
    };
    openers.findFood = [&notifier](QWidget* parent, FoodFinder&,
                                   const std::string& text) -> std::optional<TreePlace> {
        FindFoodDialog dialog(notifier, parent, toQString(text));
        if (dialog.exec() != QDialog::Accepted || !dialog.chosen()) {
            return std::nullopt;
        }
        const FindResult& found = *dialog.chosen();
        return TreePlace::ofFood(found.group, found.category, found.food);
    };
    return openers;
}

}  // namespace

FrameOpeners programOpeners(SessionNotifier& notifier, ChartSettings& chartSettings) {
    auto links = std::make_shared<CatalogueLinks>();
    const auto weightChart = [&notifier](QWidget* parent) {
        (void)BodyMassChartDialog::openChecked(notifier, parent);
    };

    const auto catalogue = [&notifier, links](QWidget* parent) {
        CatalogueDialog dialog(notifier, parent, catalogueOpeners(notifier, links),
                               &links->clipboard);
        dialog.exec();
    };

    LogbookOpeners logbook;
    logbook.meals = [&notifier, catalogue](QWidget* parent) {
        MealsDialog dialog(notifier, parent, catalogue);
        dialog.exec();
    };
    logbook.exercise = [&notifier](QWidget* parent) {
        ExerciseLogDialog dialog(notifier, parent);
        dialog.exec();
    };
    logbook.historicWeightChart = [&notifier, &chartSettings](QWidget* parent) {
        HistoricChartDialog dialog(notifier, parent, chartSettings);
        dialog.exec();
    };
    logbook.weightChart = weightChart;
    logbook.catalogue = catalogue;

    FrameOpeners openers;
    openers.logbook = [&notifier, logbook](QWidget* parent) {
        LogbookDialog dialog(notifier, parent, logbook);
        dialog.exec();
    };
    openers.weightChart = weightChart;
    return openers;
}

}  // namespace nutrovex
