#include "ui/exercise/EditExerciseDialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "logbook/ExerciseLog.h"
#include "session/Session.h"
#include "ui/exercise/ExercisePicker.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

ExerciseForm formFor(Session& session, Position row) {
    const DayRecord* day = session.days().currentRecord();
    if (day != nullptr && row < day->exercises().size()) {
        return ExerciseForm(day->exercises()[row]);
    }
    return ExerciseForm();
}

}  // namespace

EditExerciseDialog::EditExerciseDialog(SessionNotifier& notifier, QWidget* parent, Position row)
    : QDialog(parent),
      m_notifier(&notifier),
      m_row(row),
      m_exercises(std::make_unique<ExerciseLog>(notifier.session().days(),
                                                notifier.session().exerciseClipboard())),
      m_form(std::make_unique<ExerciseForm>(formFor(notifier.session(), row))),
      m_picker(new ExercisePicker(
          *m_form, notifier.session().days(),
          [this](const ScreenMessage& m) {
              return m_present ? m_present(m) : showMessage(this, m);
          },
          this)),
      m_log(new QPushButton(QStringLiteral("&Log"), this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this)) {
    setWindowTitle(QStringLiteral("Edit Exercise"));
    setModal(true);
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
    connect(m_picker, &ExercisePicker::editsChanged, this,
            [this] { m_log->setEnabled(m_form->logEnabled()); });
    m_log->setEnabled(m_form->logEnabled());
    m_picker->typeCombo()->setFocus();
}

EditExerciseDialog::~EditExerciseDialog() = default;

void EditExerciseDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void EditExerciseDialog::store() {
    const Outcome outcome = m_exercises->replace(m_row, *m_form);
    if (outcome.message) {
        (void)(m_present ? m_present(*outcome.message) : showMessage(this, *outcome.message));
        return;
    }
    showFailure(this, m_notifier->apply(outcome.notices));
    accept();
}

}  // namespace nutrovex
