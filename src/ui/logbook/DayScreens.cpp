#include "ui/logbook/DayScreens.h"

#include "session/Session.h"
#include "ui/logbook/ActivityDialog.h"
#include "ui/logbook/DayRangeDialog.h"
#include "ui/logbook/FoodBudgetDialogs.h"
#include "ui/logbook/JournalDialog.h"
#include "ui/logbook/ReportDialog.h"
#include "ui/logbook/SummaryTableDialog.h"
#include "ui/logbook/WeighInDialog.h"

namespace nutrovex {

namespace {

// A screen of the logbook made with its form on the session's days.
template <typename Screen, typename Form>
ScreenMaker maker(Session& session, SessionNotifier& notifier) {
    return [&session, &notifier](QWidget* parent) -> QDialog* {
        return new Screen(Form(session.days()), notifier, parent);
    };
}

// The report screen on the logbook's days and the person's targets.
ScreenMaker reportMaker(Session& session, SessionNotifier& notifier,
                        ReportDialog::Purpose purpose) {
    return [&session, &notifier, purpose](QWidget* parent) -> QDialog* {
        ReportForm form(session.days(), session.targets(),
                        session.targetsReadWhole() ? std::string() : session.targetsFailure());
        return new ReportDialog(std::move(form), notifier, parent, purpose);
    };
}

}  // namespace

LogbookOpeners dayScreens(Session& session, SessionNotifier& notifier, ScreenOpener weightChart) {
    LogbookOpeners openers;
    openers.weighIn = [&session, &notifier, weightChart](QWidget* parent) -> QDialog* {
        return new WeighInDialog(WeighInForm(session.days()), notifier, parent, weightChart);
    };
    openers.bmr = maker<ActivityDialog, ActivityForm>(session, notifier);
    openers.journal = maker<JournalDialog, JournalForm>(session, notifier);
    openers.foodBudget = [&session, &notifier](QWidget* parent) -> QDialog* {
        return new FoodBudgetDialog(FoodBudgetForm(session.days(), &session.targets()), notifier,
                                    parent);
    };
    openers.foodBudgetBox = maker<FoodBudgetBoxDialog, FoodBudgetBoxForm>(session, notifier);
    openers.summaryTable = [&session, &notifier](QWidget* parent) -> QDialog* {
        return new SummaryTableDialog(SummaryTableForm(session.days(), &session.targets()),
                                      notifier, parent);
    };
    openers.dayRange = maker<DayRangeDialog, DayRangeForm>(session, notifier);
    openers.printReport = reportMaker(session, notifier, ReportDialog::Purpose::Print);
    openers.exportReport = reportMaker(session, notifier, ReportDialog::Purpose::ExportPdf);
    return openers;
}

}  // namespace nutrovex
