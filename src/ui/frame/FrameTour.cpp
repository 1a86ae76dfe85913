#include "ui/frame/FrameTour.h"

#include "charts/ChartSettings.h"
#include "core/UserProfile.h"
#include "session/Session.h"
#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/UsersDialog.h"

namespace nutrovex {

std::vector<TourStop> frameTourStops(Session& session, SessionNotifier& notifier) {
    Session* s = &session;
    SessionNotifier* n = &notifier;
    std::vector<TourStop> stops;
    stops.push_back({QStringLiteral("main-menu"), [s, n](QWidget*) -> std::unique_ptr<QWidget> {
                         // A main window of its own, as the program shows it; the tour's
                         // chart choices are its own.
                         static MemoryChartSettings tourCharts;
                         return std::make_unique<CMainFrame>(MainFrameForm(*s), *n,
                                                             programOpeners(*s, *n, tourCharts));
                     }});
    stops.push_back({QStringLiteral("help"), [](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<HelpDialog>(HelpForm(helpTextSource()), parent);
                     }});
    stops.push_back({QStringLiteral("about"), [](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<AboutDialog>(parent);
                     }});
    stops.push_back({QStringLiteral("users"), [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<UsersDialog>(UsersForm(*s), *n, parent);
                     }});
    stops.push_back(
        {QStringLiteral("calendar-picker"), [s](QWidget* parent) -> std::unique_ptr<QWidget> {
             auto picker = std::make_unique<CalendarPickerDialog>(s->clock(), parent);
             const CalendarDate target = s->store().profile.goalDate();
             picker->setCaption(QStringLiteral("Target Date"));
             if (!target.isEmpty()) {
                 picker->setDate(target.year, target.month - 1, target.day);
             }
             return picker;
         }});
    return stops;
}

}  // namespace nutrovex
