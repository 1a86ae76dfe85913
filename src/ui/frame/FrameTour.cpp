#include "ui/frame/FrameTour.h"

#include "core/UserProfile.h"
#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/UsersDialog.h"

namespace nutrovex {

std::vector<TourStop> frameTourStops(SessionNotifier& notifier) {
    SessionNotifier* n = &notifier;
    std::vector<TourStop> stops;
    stops.push_back({QStringLiteral("main-menu"), [n](QWidget*) -> std::unique_ptr<QWidget> {
                         // A main window of its own, as the program shows it.
                         return std::make_unique<CMainFrame>(*n, programOpeners(*n));
                     }});
    stops.push_back({QStringLiteral("help"), [](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<HelpDialog>(parent);
                     }});
    stops.push_back({QStringLiteral("about"), [](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<AboutDialog>(parent);
                     }});
    stops.push_back({QStringLiteral("users"), [n](QWidget* parent) -> std::unique_ptr<QWidget> {
                         return std::make_unique<UsersDialog>(*n, parent);
                     }});
    stops.push_back(
        {QStringLiteral("calendar-picker"), [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             Session& session = n->session();
             auto picker = std::make_unique<CalendarPickerDialog>(session.clock(), parent);
             const CalendarDate target = session.store().profile.goalDate();
             picker->setCaption(QStringLiteral("Target Date"));
             if (!target.isEmpty()) {
                 picker->setDate(target.year, target.month - 1, target.day);
             }
             return picker;
         }});
    return stops;
}

}  // namespace nutrovex
