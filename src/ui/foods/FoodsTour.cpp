#include "ui/foods/FoodsTour.h"

#include "foods/DayCopy.h"
#include "session/Session.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/CopyToDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/foods/MealsDialog.h"
#include "ui/foods/RecipeEditorDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// The first group, from `from` on, whose first category holds a food; -1 when none does.
int groupWithFood(const FoodCatalogue& catalogue, int from) {
    for (int i = 0; i < kFoodGroupCount; ++i) {
        const int g = (from + i) % kFoodGroupCount;
        const auto& categories = catalogue.groups[static_cast<std::size_t>(g)];
        if (!categories.empty() && !categories.front().foods.empty()) {
            return g;
        }
    }
    return -1;
}

// The list of the current day with the most foods, for a grid worth looking at.
int fullestList(Session& session) {
    const DayRecord* day = session.days().currentDay();
    int best = kAllFoodsGroup;
    std::size_t most = 0;
    for (int g = 0; day && g < kFoodGroupCount; ++g) {
        if (day->group(g).size() > most) {
            most = day->group(g).size();
            best = g;
        }
    }
    return best;
}

// The person's first recipe, or their current day's breakfast drafted as one.
std::unique_ptr<QWidget> recipeEditorStop(Session& session, SessionNotifier& notifier,
                                          QWidget* parent) {
    for (const Recipe& r : session.recipes()) {
        if (const std::optional<FoodPlace> place = recipeFoodPlace(session.catalogue(), r)) {
            if (std::optional<RecipeEditorForm> form =
                    RecipeEditorForm::editFood(recipeShelf(session), *place)) {
                return std::make_unique<RecipeEditorDialog>(std::move(*form), notifier, parent);
            }
        }
    }
    FoodList breakfast;
    if (const DayRecord* day = session.days().currentDay()) {
        breakfast = mealEntries(*day, kAllFoodsGroup, 0);
    }
    RecipeEditorForm form = RecipeEditorForm::newRecipe(
        recipeShelf(session), recipeFromEntries(session.catalogue(), breakfast));
    (void)form.edit(RecipeEditorForm::Field::Name, "Breakfast bowl");
    return std::make_unique<RecipeEditorDialog>(std::move(form), notifier, parent);
}

}  // namespace

std::vector<TourStop> foodsTourStops(Session& session, SessionNotifier& notifier) {
    Session* s = &session;
    SessionNotifier* n = &notifier;
    return {
        {QStringLiteral("meals"),
         [s, n](QWidget* parent) {
             return std::make_unique<MealsDialog>(
                 MealsForm(s->catalogue(), s->days(), s->foodRunState(), &s->targets()), *n,
                 parent);
         }},
        {QStringLiteral("food-grid"),
         [s, n](QWidget* parent) {
             return std::make_unique<FoodGridDialog>(
                 FoodGridForm(s->catalogue(), s->days(), s->foodRunState(), kAllFoodsGroup), *n,
                 parent);
         }},
        {QStringLiteral("log-food"),
         [s, n](QWidget* parent) {
             const int g = groupWithFood(s->catalogue(), fullestList(*s));
             return std::make_unique<LogFoodDialog>(
                 LogFoodForm(s->catalogue(), s->days(), s->foodRunState(), std::max(g, 0)), *n,
                 parent);
         }},
        {QStringLiteral("copy-to"),
         [s, n](QWidget* parent) {
             return std::make_unique<CopyToDialog>(
                 CopyToForm(*s, kAllFoodsGroup, {}, CopyChoice::Breakfast), *n, parent);
         }},
        {QStringLiteral("recipe-editor"),
         [s, n](QWidget* parent) { return recipeEditorStop(*s, *n, parent); }},
        {QStringLiteral("find"),
         [s](QWidget* parent) {
             return std::make_unique<FindFoodDialog>(
                 FindFoodForm(s->catalogue(), s->foodRunState().finder, "ap"), parent);
         }},
        {QStringLiteral("new-food-item"),
         [s, n](QWidget* parent) {
             const int g = groupWithFood(s->catalogue(), 0);
             return std::make_unique<FoodItemDialog>(
                 FoodItemForm::newItem(s->catalogue(), std::max(g, 0), 0), *n, parent);
         }},
        {QStringLiteral("edit-food-item"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(s->catalogue(), 4);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<FoodItemDialog>(
                 FoodItemForm::editItem(s->catalogue(), g, 0, 0), *n, parent);
         }},
        {QStringLiteral("insert-food"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(s->catalogue(), 5);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<FoodItemDialog>(
                 FoodItemForm::insertIntoDay(s->catalogue(), g, 0, 0, s->days(),
                                             s->foodRunState().view),
                 *n, parent);
         }},
        {QStringLiteral("edit-logged-food"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const DayRecord* day = s->days().currentDay();
             if (!day || day->allFoods().empty()) {
                 return nullptr;
             }
             FoodLogView view = s->foodRunState().view;
             view.shownGroup = kAllFoodsGroup;
             return std::make_unique<FoodItemDialog>(
                 FoodItemForm::editLoggedEntry(s->days(), view, 0), *n, parent);
         }},
        {QStringLiteral("category"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(s->catalogue(), 0);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<CategoryNameDialog>(
                 CategoryNameForm(s->catalogue(), g, 0, true), *n, parent);
         }},
    };
}

}  // namespace nutrovex
