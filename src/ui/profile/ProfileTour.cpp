#include <tuple>

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
             TargetsForm form(s->targets(),
                              s->targetsReadWhole() ? std::string() : s->targetsFailure(),
                              s->days());
             if (!s->targets().any()) {
                 // A typical set, typed but not saved: the tour only looks.
                 using F = TargetsForm::Field;
                 for (const auto& [nutrient, amount, kind] :
                      {std::tuple{TargetNutrient::Protein, "30", "%"},
                       std::tuple{TargetNutrient::Carbohydrate, "45", "%"},
                       std::tuple{TargetNutrient::Fat, "25", "%"},
                       std::tuple{TargetNutrient::Fiber, "30", "g"},
                       std::tuple{TargetNutrient::SaturatedFat, "20", "g"}}) {
                     (void)form.edit(nutrient, F::Amount, amount);
                     (void)form.edit(nutrient, F::Kind, kind);
                 }
             }
             return std::make_unique<TargetsDialog>(std::move(form), *n, parent);
         }},
    };
}

}  // namespace nutrovex
