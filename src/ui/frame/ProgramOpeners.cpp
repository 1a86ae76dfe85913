#include "ui/frame/ProgramOpeners.h"

#include "session/Session.h"
#include "ui/Resources.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/HistoricChartDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/foods/MealsDialog.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/UsersDialog.h"
#include "ui/logbook/DayScreens.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {

FrameOpeners programOpeners(Session& session, SessionNotifier& notifier,
                            ChartSettings& chartSettings) {
    const ScreenOpener weightChart = [&session, &notifier](QWidget* parent) {
        (void)BodyMassChartDialog::openChecked(BodyMassChartForm(session.days()), notifier, parent);
    };

    const ScreenOpener catalogue = [&session, &notifier](QWidget* parent) {
        CatalogueDialog dialog(
            CatalogueForm(session.catalogue(), session.days(), session.foodRunState()), notifier,
            parent);
        dialog.exec();
    };

    LogbookOpeners logbook = dayScreens(session, notifier, weightChart);
    logbook.meals = [&session, &notifier, catalogue](QWidget* parent) {
        MealsDialog dialog(MealsForm(session.catalogue(), session.days(), session.foodRunState()),
                           notifier, parent, catalogue);
        dialog.exec();
    };
    logbook.exercise = [&session, &notifier](QWidget* parent) {
        ExerciseLogDialog dialog(ExerciseLogForm(session.days(), session.exerciseClipboard()),
                                 notifier, parent);
        dialog.exec();
    };
    logbook.historicWeightChart = [&session, &notifier, &chartSettings](QWidget* parent) {
        HistoricChartDialog dialog(HistoricChartForm(session.days(), chartSettings), notifier,
                                   parent);
        dialog.exec();
    };
    logbook.weightChart = weightChart;
    logbook.catalogue = catalogue;

    FrameOpeners openers;
    openers.help = [](QWidget* parent) {
        HelpDialog dialog(HelpForm(helpTextSource()), parent);
        dialog.exec();
    };
    openers.personalInfo = [&session, &notifier](QWidget* parent) {
        PersonalInfoDialog dialog(PersonalInfoForm(session.store().profile, &session.days()),
                                  notifier, parent);
        dialog.exec();
    };
    openers.goals = [&session, &notifier, weightChart](QWidget* parent) {
        GoalsDialog dialog(GoalsForm(session.store().profile, session.clock()), notifier, parent,
                           weightChart);
        dialog.exec();
    };
    openers.logbook = [&session, &notifier, logbook](QWidget* parent) {
        LogbookDialog dialog(LogbookForm(session.days()), notifier, parent, logbook);
        dialog.exec();
    };
    openers.users = [&session, &notifier](QWidget* parent) {
        UsersDialog dialog(UsersForm(session), notifier, parent);
        dialog.exec();
    };
    return openers;
}

}  // namespace nutrovex
