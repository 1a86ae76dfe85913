#include "ui/logbook/LogbookTour.h"

#include <utility>

#include "session/Session.h"
#include "ui/logbook/DayScreens.h"

namespace nutrovex {

namespace {

TourStop stop(const char* name, ScreenMaker make) {
    return {QString::fromLatin1(name),
            [make = std::move(make)](QWidget* parent) -> std::unique_ptr<QWidget> {
                return std::unique_ptr<QWidget>(make(parent));
            }};
}

// The logbook as the program shows it, its commands to other areas enabled. The tour only takes
// pictures, so those openers are never run.
TourStop logbookStop(Session& session, SessionNotifier& notifier) {
    return {QStringLiteral("logbook"),
            [&session, &notifier](QWidget* parent) -> std::unique_ptr<QWidget> {
                const auto pictured = [](QWidget*) {};
                LogbookOpeners openers = dayScreens(session, notifier);
                openers.meals = pictured;
                openers.exercise = pictured;
                openers.historicWeightChart = pictured;
                openers.weightChart = pictured;
                openers.catalogue = pictured;
                return std::make_unique<LogbookDialog>(
                    LogbookForm(session.days(), &session.targets()), notifier, parent,
                    std::move(openers));
            }};
}

}  // namespace

std::vector<TourStop> logbookTourStops(Session& session, SessionNotifier& notifier) {
    const LogbookOpeners screens = dayScreens(session, notifier);
    return {
        logbookStop(session, notifier),
        stop("range-of-days", screens.dayRange),
        stop("weigh-in", screens.weighIn),
        stop("journal", screens.journal),
        stop("activity-bmr", screens.bmr),
        stop("food-budget", screens.foodBudget),
        stop("food-budget-box", screens.foodBudgetBox),
        stop("summary-table", screens.summaryTable),
        stop("report-preview", screens.exportReport),
    };
}

}  // namespace nutrovex
