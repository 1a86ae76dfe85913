#include "ui/foods/FoodsTour.h"

#include "session/Session.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/foods/MealsDialog.h"
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

}  // namespace

std::vector<TourStop> foodsTourStops(SessionNotifier& notifier) {
    SessionNotifier* n = &notifier;
    return {
        {QStringLiteral("meals"),
         [n](QWidget* parent) { return std::make_unique<MealsDialog>(*n, parent); }},
        {QStringLiteral("food-grid"),
         [n](QWidget* parent) {
             return std::make_unique<FoodGridDialog>(*n, parent, kAllFoodsGroup);
         }},
        {QStringLiteral("log-food"),
         [n](QWidget* parent) {
             const int g = groupWithFood(n->session().catalogue(), fullestList(n->session()));
             return std::make_unique<LogFoodDialog>(*n, parent, std::max(g, 0));
         }},
        {QStringLiteral("find"),
         [n](QWidget* parent) {
             return std::make_unique<FindFoodDialog>(*n, parent, QStringLiteral("ap"));
         }},
        {QStringLiteral("new-food-item"),
         [n](QWidget* parent) {
             const int g = groupWithFood(n->session().catalogue(), 0);
             return std::make_unique<NewFoodItemDialog>(*n, parent, std::max(g, 0), 0);
         }},
        {QStringLiteral("edit-food-item"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(n->session().catalogue(), 4);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<EditFoodItemDialog>(*n, parent, g, 0, 0);
         }},
        {QStringLiteral("insert-food"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(n->session().catalogue(), 5);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<InsertFoodDialog>(*n, parent, g, 0, 0);
         }},
        {QStringLiteral("edit-logged-food"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const DayRecord* day = n->session().days().currentDay();
             if (!day || day->allFoods().empty()) {
                 return nullptr;
             }
             FoodLogView view = foodRunState(*n).view;
             view.shownGroup = kAllFoodsGroup;
             return std::make_unique<EditFoodEntryDialog>(*n, parent, view, 0);
         }},
        {QStringLiteral("category"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             const int g = groupWithFood(n->session().catalogue(), 0);
             if (g < 0) {
                 return nullptr;
             }
             return std::make_unique<CategoryNameDialog>(*n, parent, g, 0, true);
         }},
    };
}

}  // namespace nutrovex
