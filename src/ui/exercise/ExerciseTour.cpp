#include "ui/exercise/ExerciseTour.h"

#include <QComboBox>
#include <QLineEdit>

#include "ui/exercise/EditExerciseDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/exercise/ExercisePicker.h"

namespace nutrovex {

std::vector<TourStop> exerciseTourStops(SessionNotifier& notifier) {
    return {{QStringLiteral("exercise-log"),
             [&notifier](QWidget* parent) {
                 auto dialog = std::make_unique<ExerciseLogDialog>(notifier, parent);
                 // "Running", "General", "6.0 mph", and half an hour typed in.
                 ExercisePicker& picker = *dialog->picker();
                 picker.typeCombo()->setCurrentIndex(
                     picker.typeCombo()->findText(QStringLiteral("Running")));
                 picker.subVariantCombo()->setCurrentIndex(
                     picker.subVariantCombo()->findText(QStringLiteral("6.0 mph")));
                 picker.minutesEdit()->setText(QStringLiteral("30"));
                 return std::unique_ptr<QWidget>(std::move(dialog));
             }},
            {QStringLiteral("edit-exercise"), [&notifier](QWidget* parent) {
                 return std::unique_ptr<QWidget>(
                     std::make_unique<EditExerciseDialog>(notifier, parent, 0));
             }}};
}

}  // namespace nutrovex
