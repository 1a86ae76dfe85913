#include "charts/ChartSettings.h"
#include "session/Session.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"
#include "ui/profile/TargetsDialog.h"

namespace nutrovex {

std::vector<TourStop> profileTourStops(Session& session, SessionNotifier& notifier) {
    Session* s = &session;
    SessionNotifier* n = &notifier;
    return {
        {QStringLiteral("personal-information"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             return std::make_unique<PersonalInfoDialog>(PersonalInfoForm(s->store().profile), *n,
                                                         parent);
         }},
        {QStringLiteral("goals"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             return std::make_unique<GoalsDialog>(
                 GoalsForm(s->store().profile, s->clock()), *n, parent, [](QWidget*) {},
                 [](QWidget*) {});
         }},
        {QStringLiteral("targets"),
         [s, n](QWidget* parent) -> std::unique_ptr<QWidget> {
             return std::make_unique<TargetsDialog>(
                 TargetsForm(s->targets(),
                             s->targetsReadWhole() ? std::string() : s->targetsFailure(),
                             s->days()),
                 *n, parent);
         }},
    };
}

}  // namespace nutrovex
