#include "ui/catalogue/CatalogueTour.h"

#include "session/Session.h"
#include "ui/catalogue/CatalogueDialog.h"

namespace nutrovex {

std::vector<TourStop> catalogueTourStops(Session& session, SessionNotifier& notifier) {
    return {{QStringLiteral("catalogue"), [&session, &notifier](QWidget* parent) {
                 auto dialog = std::make_unique<CatalogueDialog>(
                     CatalogueForm(session.catalogue(), session.days(), session.foodRunState()),
                     notifier, parent);
                 // The first group that has a food, opened on its first food.
                 const FoodCatalogue& catalogue = session.catalogue();
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
