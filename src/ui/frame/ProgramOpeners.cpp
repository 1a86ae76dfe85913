#include "ui/frame/ProgramOpeners.h"

#include "session/Session.h"
#include "ui/Resources.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/HistoricChartDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/foods/CopyToDialog.h"
#include "ui/foods/MealsDialog.h"
#include "ui/foods/RecipeEditorDialog.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/UsersDialog.h"
#include "ui/logbook/DayScreens.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"
#include "ui/profile/TargetsDialog.h"

namespace nutrovex {

FrameOpeners programOpeners(Session& session, SessionNotifier& notifier,
                            ChartSettings& chartSettings) {
    const ScreenOpener weightChart = [&session, &notifier](QWidget* parent) {
        (void)BodyMassChartDialog::openChecked(BodyMassChartForm(session.days()), notifier, parent);
    };

    CatalogueOpeners catalogueOpeners;
    const auto recipeEditor = [&notifier](QWidget* parent,
                                          RecipeEditorForm form) -> std::optional<FoodPlace> {
        RecipeEditorDialog dialog(std::move(form), notifier, parent);
        return dialog.exec() == QDialog::Accepted ? dialog.form().saved() : std::nullopt;
    };
    catalogueOpeners.newRecipe = [&session, recipeEditor](QWidget* parent) {
        return recipeEditor(parent, RecipeEditorForm::newRecipe(recipeShelf(session)));
    };
    catalogueOpeners.editRecipe = [&session, recipeEditor](QWidget* parent, const FoodPlace& food) {
        std::optional<RecipeEditorForm> form =
            RecipeEditorForm::editFood(recipeShelf(session), food);
        return form ? recipeEditor(parent, std::move(*form)) : std::nullopt;
    };
    catalogueOpeners.isRecipeFood = [&session](const FoodPlace& food) {
        return RecipeEditorForm::isRecipeFood(recipeShelf(session), food);
    };
    const ScreenOpener catalogue = [&session, &notifier, catalogueOpeners](QWidget* parent) {
        CatalogueDialog dialog(
            CatalogueForm(session.catalogue(), session.days(), session.foodRunState()), notifier,
            parent, catalogueOpeners);
        dialog.exec();
    };

    FoodOpeners foodOpeners(catalogue);
    foodOpeners.newRecipe = [&session, recipeEditor](QWidget* parent, FoodList entries) {
        RecipeDraft draft;
        if (!entries.empty()) {
            draft = recipeFromEntries(session.catalogue(), entries);
        }
        return recipeEditor(parent, RecipeEditorForm::newRecipe(recipeShelf(session), draft));
    };
    foodOpeners.copyTo = [&session, &notifier](QWidget* parent, int shownGroup, FoodList selected) {
        CopyToDialog dialog(
            CopyToForm(session, shownGroup, std::move(selected), CopyChoice::Selected), notifier,
            parent);
        dialog.exec();
    };

    LogbookOpeners logbook = dayScreens(session, notifier, weightChart);
    logbook.meals = [&session, &notifier, foodOpeners](QWidget* parent) {
        MealsDialog dialog(MealsForm(session.catalogue(), session.days(), session.foodRunState(),
                                     &session.targets()),
                           notifier, parent, foodOpeners);
        dialog.exec();
    };
    logbook.exercise = [&session, &notifier](QWidget* parent) {
        ExerciseLogDialog dialog(ExerciseLogForm(session.days(), session.exerciseClipboard()),
                                 notifier, parent);
        dialog.exec();
    };
    logbook.historicWeightChart = [&session, &notifier, &chartSettings](QWidget* parent) {
        HistoricChartDialog dialog(HistoricChartForm(session.days(), chartSettings), notifier,
                                   parent);
        dialog.exec();
    };
    logbook.weightChart = weightChart;
    logbook.catalogue = catalogue;
    logbook.copyDay = [&session, &notifier](QWidget* parent) {
        CopyToDialog dialog(CopyToForm(session, kAllFoodsGroup, {}, CopyChoice::WholeDay), notifier,
                            parent);
        dialog.exec();
    };

    FrameOpeners openers;
    openers.help = [](QWidget* parent) {
        HelpDialog dialog(HelpForm(helpTextSource()), parent);
        dialog.exec();
    };
    openers.personalInfo = [&session, &notifier](QWidget* parent) {
        PersonalInfoDialog dialog(PersonalInfoForm(session.store().profile, &session.days()),
                                  notifier, parent);
        dialog.exec();
    };
    const ScreenOpener targets = [&session, &notifier](QWidget* parent) {
        TargetsDialog dialog(
            TargetsForm(session.targets(),
                        session.targetsReadWhole() ? std::string() : session.targetsFailure(),
                        session.days()),
            notifier, parent);
        dialog.exec();
    };
    openers.goals = [&session, &notifier, weightChart, targets](QWidget* parent) {
        GoalsDialog dialog(GoalsForm(session.store().profile, session.clock()), notifier, parent,
                           weightChart, targets);
        dialog.exec();
    };
    openers.logbook = [&session, &notifier, logbook](QWidget* parent) {
        LogbookDialog dialog(LogbookForm(session.days(), &session.targets()), notifier, parent,
                             logbook);
        dialog.exec();
    };
    openers.users = [&session, &notifier](QWidget* parent) {
        UsersDialog dialog(UsersForm(session), notifier, parent);
        dialog.exec();
    };
    return openers;
}

}  // namespace nutrovex
