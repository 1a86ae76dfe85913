#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {

std::vector<TourStop> profileTourStops(SessionNotifier& notifier) {
    SessionNotifier* n = &notifier;
    return {
        {QStringLiteral("personal-information"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             return std::make_unique<PersonalInfoDialog>(*n, parent);
         }},
        {QStringLiteral("goals"),
         [n](QWidget* parent) -> std::unique_ptr<QWidget> {
             return std::make_unique<GoalsDialog>(*n, parent, programOpeners(*n).weightChart);
         }},
    };
}

}  // namespace nutrovex
