#include "ui/exercise/EditExerciseDialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/exercise/ExercisePicker.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

EditExerciseDialog::EditExerciseDialog(EditExerciseForm form, SessionNotifier& notifier,
                                       QWidget* parent)
    : QDialog(parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_picker(new ExercisePicker(this)),
      m_log(new QPushButton(QStringLiteral("&Log"), this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this)) {
    setWindowTitle(QStringLiteral("Edit Exercise"));
    setModal(true);
    coverOpener(*this, parent);
    m_log->setDefault(true);
    m_log->setAccessibleName(QStringLiteral("Log"));
    m_cancel->setAccessibleName(QStringLiteral("Cancel"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_log);
    buttons->addWidget(m_cancel);
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_picker);
    layout->addStretch(1);
    setTabOrder(m_log, m_cancel);
    setTabOrder(m_cancel, m_picker);

    connect(m_log, &QPushButton::clicked, this, &EditExerciseDialog::store);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_picker, &ExercisePicker::edited, this,
            [this](ExerciseChoice::Field field, const QString& text) {
                m_form.edit(field, fromQString(text).value_or(std::string()));
                redraw();
            });
    connect(m_picker, &ExercisePicker::caloriesRequested, this, [this] {
        const Outcome outcome = m_form.command(EditExerciseForm::Command::Calories);
        if (outcome.message) {
            (void)present(*outcome.message);
            m_picker->minutesEdit()->setFocus();
        }
        redraw();
    });
    redraw();
    m_picker->typeCombo()->setFocus();
}

void EditExerciseDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

bool EditExerciseDialog::present(const ScreenMessage& message) {
    return m_present ? m_present(message) : showMessage(this, message);
}

void EditExerciseDialog::redraw() {
    const ExerciseChoiceView v = m_form.view();
    m_picker->show(v);
    m_log->setEnabled(v.logEnabled);
}

void EditExerciseDialog::store() {
    const Outcome outcome = m_form.command(EditExerciseForm::Command::Log);
    if (outcome.message) {
        (void)present(*outcome.message);
        return;
    }
    (void)showFailure(this, m_notifier->apply(outcome));
    accept();
}

}  // namespace nutrovex
