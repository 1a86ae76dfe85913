#include "ui/exercise/ExerciseTour.h"

#include <QComboBox>
#include <QLineEdit>

#include "session/Session.h"
#include "ui/exercise/EditExerciseDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/exercise/ExercisePicker.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// The tour shows a day with exercises: the current one when it has any, else the latest that has.
void showADayWithExercises(Session& session) {
    DayCursor& days = session.days();
    const DayRecord* current = days.currentRecord();
    if (current != nullptr && !current->exercises().empty()) {
        return;
    }
    const auto& all = session.store().days();
    for (auto it = all.rbegin(); it != all.rend(); ++it) {
        if (!(*it)->exercises().empty()) {
            (void)days.setCurrentDate((*it)->date());
            return;
        }
    }
}

}  // namespace

std::vector<TourStop> exerciseTourStops(Session& session, SessionNotifier& notifier) {
    return {{QStringLiteral("exercise-log"),
             [&session, &notifier](QWidget* parent) {
                 showADayWithExercises(session);
                 auto dialog = std::make_unique<ExerciseLogDialog>(
                     ExerciseLogForm(session.days(), session.exerciseClipboard()), notifier,
                     parent);
                 // "Running", "General", "6.0 mph", and half an hour typed in.
                 ExercisePicker& picker = *dialog->picker();
                 picker.typeCombo()->setCurrentIndex(
                     picker.typeCombo()->findText(QStringLiteral("Running")));
                 picker.subVariantCombo()->setCurrentIndex(
                     picker.subVariantCombo()->findText(QStringLiteral("6.0 mph")));
                 picker.minutesEdit()->setText(QStringLiteral("30"));
                 return std::unique_ptr<QWidget>(std::move(dialog));
             }},
            {QStringLiteral("edit-exercise"), [&session, &notifier](QWidget* parent) {
                 showADayWithExercises(session);
                 return std::unique_ptr<QWidget>(std::make_unique<EditExerciseDialog>(
                     EditExerciseForm(session.days(), 0), notifier, parent));
             }}};
}

}  // namespace nutrovex
