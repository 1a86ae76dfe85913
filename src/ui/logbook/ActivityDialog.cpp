#include "ui/logbook/ActivityDialog.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "calc/Bmr.h"
#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// Mnemonics on the level captions: the first letters, except "Other", whose O opens Options.
QString levelCaption(int level) {
    QString caption = toQString(kActivityLevelNames[level]);
    const int at = level == kLevelManual ? 1 : 0;
    return caption.insert(at, QLatin1Char('&'));
}

}  // namespace

ActivityDialog::ActivityDialog(ActivityForm form, SessionNotifier& notifier, QWidget* parent)
    : LogbookScreen(notifier, parent, QStringLiteral("BMR")),
      m_form(std::move(form)),
      m_group(new QButtonGroup(this)),
      m_bmr(new QLineEdit(this)),
      m_default(new QPushButton(QStringLiteral("Set as &Daily Default"), this)) {
    addOptionsMenu();

    auto* question = new QLabel(toQString(kActivityQuestion), this);
    question->setWordWrap(true);
    body()->addWidget(question);
    for (int level = 1; level <= 5; ++level) {
        auto* button = new QRadioButton(levelCaption(level), this);
        button->setAccessibleName(toQString(kActivityLevelNames[level]));
        m_levels[static_cast<std::size_t>(level - 1)] = button;
        m_group->addButton(button, level);
        body()->addWidget(button);
    }
    // The level is the day's, not the group's: nothing stays checked unless the day says so.
    m_group->setExclusive(false);

    auto* bmrLabel = new QLabel(QStringLiteral("&BMR:"), this);
    bmrLabel->setBuddy(m_bmr);
    m_bmr->setMaxLength(static_cast<int>(kBmrMaxChars));
    m_bmr->setValidator(new QIntValidator(0, 9999, m_bmr));
    m_bmr->setAccessibleName(QStringLiteral("BMR:"));
    m_bmr->setMaximumWidth(m_bmr->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    auto* row = new QHBoxLayout;
    row->addWidget(bmrLabel);
    row->addWidget(m_bmr);
    row->addWidget(new QLabel(QStringLiteral("calories"), this));
    row->addStretch();
    body()->addLayout(row);

    auto* advice = new QLabel(toQString(kBmrOptionsAdvice), this);
    advice->setWordWrap(true);
    body()->addWidget(advice);
    m_default->setAccessibleName(QStringLiteral("Set as Daily Default"));
    m_default->setAutoDefault(false);
    body()->addWidget(m_default, 0, Qt::AlignLeft);
    body()->addStretch();

    connect(m_group, &QButtonGroup::idClicked, this, [this](int level) {
        run(m_form.command(static_cast<ActivityForm::Command>(level)));
        refresh();
    });
    connect(m_bmr, &QLineEdit::textEdited, this, [this](const QString& text) {
        run(m_form.edit(ActivityForm::Field::Bmr, text.toStdString()));
    });
    connect(m_default, &QPushButton::clicked, this,
            [this] { run(m_form.command(ActivityForm::Command::SetAsDailyDefault)); });
    connect(&notifier, &SessionNotifier::dataChanged, this, &ActivityDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &ActivityDialog::refresh);
    refresh();
}

void ActivityDialog::run(const Outcome& outcome) {
    (void)showOutcome(this, notifier(), outcome);
}

void ActivityDialog::done(int result) {
    (void)showFailure(this, notifier().save(m_form.close()));
    LogbookScreen::done(result);
}

void ActivityDialog::refresh() {
    const ActivityView v = m_form.view();
    dateLine()->setText(toQString(v.date));
    for (int level = 1; level <= 5; ++level) {
        QRadioButton* button = levelButton(level);
        button->setChecked(v.level == level);
        button->setEnabled(v.levelsEnabled);
    }
    m_default->setEnabled(v.levelsEnabled);
    m_bmr->setEnabled(v.bmrEnabled);
    // Typing stays where it is; only a different figure is written back.
    const QString bmr = toQString(v.bmr);
    if (m_bmr->text() != bmr &&
        !(m_bmr->hasFocus() && m_bmr->text().isEmpty() && bmr == QStringLiteral("0"))) {
        m_bmr->setText(bmr);
    }
}

}  // namespace nutrovex
