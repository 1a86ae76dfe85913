#include "ui/profile/GoalsDialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/controls/CommitOnLeave.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

GoalsDialog::GoalsDialog(GoalsForm form, SessionNotifier& notifier, QWidget* parent,
                         ScreenOpener weightChart, ScreenOpener targets)
    : ScreenDialog(QStringLiteral("Set Goals"), parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_openWeightChart(std::move(weightChart)),
      m_openTargets(std::move(targets)),
      m_start(new QLineEdit(this)),
      m_startUnit(new QLabel(this)),
      m_startDate(new QLabel(this)),
      m_setStart(new QPushButton(QStringLiteral("S&et..."), this)),
      m_goal(new QLineEdit(this)),
      m_goalUnit(new QLabel(this)),
      m_targetDate(new QLabel(this)),
      m_setTarget(new QPushButton(QStringLiteral("Se&t..."), this)),
      m_sentence(new QLabel(this)),
      m_targets(new QPushButton(QStringLiteral("&Nutrient Targets..."), this)) {
    for (QLineEdit* edit : {m_start, m_goal}) {
        edit->setValidator(new QIntValidator(0, 99999, edit));
        // Room for a weight, with its unit beside it.
        edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) * 2);
    }
    auto* startLabel = new QLabel(QStringLiteral("&Start:"), this);
    startLabel->setBuddy(m_start);
    m_start->setAccessibleName(QStringLiteral("Start:"));
    auto* goalLabel = new QLabel(QStringLiteral("&Goal:"), this);
    goalLabel->setBuddy(m_goal);
    m_goal->setAccessibleName(QStringLiteral("Goal:"));
    m_startDate->setAccessibleName(toQString(GoalsForm::startDateCaption()));
    m_targetDate->setAccessibleName(toQString(GoalsForm::targetDateCaption()));
    m_setStart->setAccessibleName(QStringLiteral("Set... ") +
                                  toQString(GoalsForm::startDateCaption()));
    m_setTarget->setAccessibleName(QStringLiteral("Set... ") +
                                   toQString(GoalsForm::targetDateCaption()));
    for (QPushButton* button : {m_setStart, m_setTarget}) {
        button->setAutoDefault(false);
    }

    auto* grid = new QGridLayout;
    grid->addWidget(startLabel, 0, 0);
    grid->addWidget(m_start, 0, 1);
    grid->addWidget(m_startUnit, 0, 2);
    grid->addWidget(m_startDate, 1, 1, 1, 2);
    grid->addWidget(m_setStart, 1, 3);
    grid->addWidget(goalLabel, 2, 0);
    grid->addWidget(m_goal, 2, 1);
    grid->addWidget(m_goalUnit, 2, 2);
    grid->addWidget(m_targetDate, 3, 1, 1, 2);
    grid->addWidget(m_setTarget, 3, 3);
    grid->setColumnStretch(4, 1);
    grid->setVerticalSpacing(10);
    body()->addLayout(grid);

    auto* calculator = new QGroupBox(QStringLiteral("Calorie Calculator"), this);
    auto* calculatorLayout = new QVBoxLayout(calculator);
    m_sentence->setWordWrap(true);
    m_sentence->setAccessibleName(QStringLiteral("Calorie Calculator"));
    m_sentence->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    m_sentence->setFocusPolicy(Qt::TabFocus);
    calculatorLayout->addWidget(m_sentence);
    body()->addWidget(calculator);
    m_targets->setAccessibleName(QStringLiteral("Nutrient Targets..."));
    m_targets->setAutoDefault(false);
    m_targets->setEnabled(static_cast<bool>(m_openTargets));
    auto* targetsRow = new QHBoxLayout;
    targetsRow->addWidget(m_targets);
    targetsRow->addStretch(1);
    body()->addLayout(targetsRow);
    body()->addStretch(1);

    QMenu* goals = menuBar()->addMenu(QStringLiteral("&Goals"));
    QAction* reset = goals->addAction(QStringLiteral("&Reset"));
    connect(reset, &QAction::triggered, this, &GoalsDialog::reset);
    QAction* targetsEntry = goals->addAction(QStringLiteral("Nutrient &Targets..."));
    targetsEntry->setEnabled(static_cast<bool>(m_openTargets));
    const auto openTargets = [this] {
        if (m_openTargets) {
            m_openTargets(this);
        }
    };
    connect(targetsEntry, &QAction::triggered, this, openTargets);
    connect(m_targets, &QPushButton::clicked, this, openTargets);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    m_weightChart = options->addAction(QStringLiteral("&Weight Chart"));
    m_weightChart->setEnabled(static_cast<bool>(m_openWeightChart));
    connect(m_weightChart, &QAction::triggered, this, [this] {
        if (m_openWeightChart) {
            m_openWeightChart(this);
        }
    });
    addAboutCommand(options);

    m_startCommit = new CommitOnLeave(m_start, [this](const QString& text) {
        run(m_form.edit(GoalsForm::Field::StartWeight, text.toStdString()));
    });
    m_goalCommit = new CommitOnLeave(m_goal, [this](const QString& text) {
        run(m_form.edit(GoalsForm::Field::GoalWeight, text.toStdString()));
    });
    connect(m_setStart, &QPushButton::clicked, this, [this] { pickDate(true); });
    connect(m_setTarget, &QPushButton::clicked, this, [this] { pickDate(false); });
    connect(&notifier, &SessionNotifier::dataChanged, this, &GoalsDialog::redisplay);
    connect(&notifier, &SessionNotifier::userChanged, this, &GoalsDialog::redisplay);

    setTabOrder(okButton(), m_start);
    setTabOrder(m_start, m_setStart);
    setTabOrder(m_setStart, m_goal);
    setTabOrder(m_goal, m_setTarget);
    setTabOrder(m_setTarget, m_sentence);
    setTabOrder(m_sentence, m_targets);
    redisplay();
    m_start->setFocus();
}

void GoalsDialog::run(const Outcome& outcome) {
    (void)showOutcome(this, *m_notifier, outcome);
    redisplay();
}

void GoalsDialog::pickDate(bool start) {
    const GoalsView v = m_form.view();
    const CalendarDate shown = start ? v.start : v.target;
    CalendarPickerDialog picker(m_form.clock(), this);
    picker.setCaption(
        toQString(start ? GoalsForm::startDateCaption() : GoalsForm::targetDateCaption()));
    if (!shown.isEmpty()) {
        picker.setDate(shown.year, shown.month - 1, shown.day);
    }
    if (picker.exec() != QDialog::Accepted) {
        return;
    }
    const CalendarDate picked =
        CalendarDate::fromDmy(picker.day(), picker.month() + 1, picker.year());
    run(m_form.pickDate(start ? GoalsForm::Field::StartDate : GoalsForm::Field::TargetDate,
                        picked));
}

void GoalsDialog::reset() {
    const auto question = GoalsForm::confirmation(GoalsForm::Command::Reset);
    if (!question || !showMessage(this, *question)) {
        return;
    }
    run(m_form.command(GoalsForm::Command::Reset));
}

void GoalsDialog::done(int result) {
    // A weight still being typed is complete now.
    m_startCommit->commitIfEdited();
    m_goalCommit->commitIfEdited();
    (void)showFailure(this, m_notifier->save(m_form.close()));
    ScreenDialog::done(result);
}

void GoalsDialog::redisplay() {
    const GoalsView v = m_form.view();
    // The weight being typed is not rewritten under the person's fingers.
    if (!m_start->hasFocus()) {
        m_start->setText(toQString(v.startWeight));
    }
    if (!m_goal->hasFocus()) {
        m_goal->setText(toQString(v.goalWeight));
    }
    m_startUnit->setText(toQString(v.unit));
    m_goalUnit->setText(toQString(v.unit));
    showFigure(m_startDate, toQString(GoalsForm::startDateCaption()), toQString(v.startDate));
    showFigure(m_targetDate, toQString(GoalsForm::targetDateCaption()), toQString(v.targetDate));
    showFigure(m_sentence, QStringLiteral("Calorie Calculator"), toQString(v.sentence));
}

}  // namespace nutrovex
