#include "ui/catalogue/CatalogueTour.h"

#include "session/Session.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

std::vector<TourStop> catalogueTourStops(SessionNotifier& notifier) {
    return {{QStringLiteral("catalogue"), [&notifier](QWidget* parent) {
                 auto dialog = std::make_unique<CatalogueDialog>(notifier, parent);
                 // The first group that has a food, opened on its first food.
                 const FoodCatalogue& catalogue = notifier.session().catalogue();
                 for (int g = 0; g < kFoodGroupCount; ++g) {
                     const CategoryList& list = catalogue.groups[static_cast<std::size_t>(g)];
                     if (!list.empty() && !list.front().foods.empty()) {
                         dialog->selectPlace(TreePlace::ofFood(g, 0, 0));
                         break;
                     }
                 }
                 return std::unique_ptr<QWidget>(std::move(dialog));
             }}};
}

}  // namespace nutrovex
