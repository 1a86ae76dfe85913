#include "ui/logbook/LogbookTour.h"

#include <utility>

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

// The logbook as the program shows it, its commands to other areas enabled. The tour only takes
// pictures, so those openers are never run.
TourStop logbookStop(SessionNotifier& notifier) {
    return {QStringLiteral("logbook"), [&notifier](QWidget* parent) -> std::unique_ptr<QWidget> {
                const auto pictured = [](QWidget*) {};
                LogbookOpeners openers{pictured, pictured, pictured, pictured, pictured};
                return std::make_unique<LogbookDialog>(notifier, parent, std::move(openers));
            }};
}

}  // namespace

std::vector<TourStop> logbookTourStops(SessionNotifier& notifier) {
    return {
        logbookStop(notifier),
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
