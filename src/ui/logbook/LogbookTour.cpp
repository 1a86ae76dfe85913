#include "ui/logbook/LogbookTour.h"

#include "ui/logbook/ActivityDialog.h"
#include "ui/logbook/DayRangeDialog.h"
#include "ui/logbook/FoodBudgetDialogs.h"
#include "ui/logbook/JournalDialog.h"
#include "ui/logbook/LogbookDialog.h"
#include "ui/logbook/SummaryTableDialog.h"
#include "ui/logbook/WeighInDialog.h"

namespace nutrovex {

namespace {

template <typename Screen>
TourStop stop(const char* name, SessionNotifier& notifier) {
    return {QString::fromLatin1(name), [&notifier](QWidget* parent) -> std::unique_ptr<QWidget> {
                return std::make_unique<Screen>(notifier, parent);
            }};
}

}  // namespace

std::vector<TourStop> logbookTourStops(SessionNotifier& notifier) {
    return {
        stop<LogbookDialog>("logbook", notifier),
        stop<DayRangeDialog>("range-of-days", notifier),
        stop<WeighInDialog>("weigh-in", notifier),
        stop<JournalDialog>("journal", notifier),
        stop<ActivityDialog>("activity-bmr", notifier),
        stop<FoodBudgetDialog>("food-budget", notifier),
        stop<FoodBudgetBoxDialog>("food-budget-box", notifier),
        stop<SummaryTableDialog>("summary-table", notifier),
    };
}

}  // namespace nutrovex
