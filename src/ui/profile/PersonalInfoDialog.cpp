#include "ui/profile/PersonalInfoDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpressionValidator>

#include "core/UserProfile.h"
#include "ui/TextConvert.h"
#include "ui/controls/BlankListStart.h"
#include "ui/controls/CommitOnLeave.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

void fillCombo(QComboBox* combo, const std::vector<std::string>& items) {
    combo->clear();
    for (const std::string& item : items) {
        combo->addItem(toQString(item));
    }
}

QLabel* labelFor(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    QString plain = text;
    buddy->setAccessibleName(plain.remove(u'&'));
    return label;
}

}  // namespace

PersonalInfoDialog::PersonalInfoDialog(PersonalInfoForm form, SessionNotifier& notifier,
                                       QWidget* parent)
    : ScreenDialog(QStringLiteral("Personal Information"), parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_name(new QLineEdit(this)),
      m_units(new QComboBox(this)),
      m_firstHeight(new QComboBox(this)),
      m_firstUnit(new QLabel(this)),
      m_secondHeight(new QComboBox(this)),
      m_secondUnit(new QLabel(this)),
      m_age(new QLineEdit(this)),
      m_gender(new QComboBox(this)) {
    m_name->setMaxLength(static_cast<int>(kMaxDisplayName));
    fillCombo(m_units, PersonalInfoForm::unitChoices());
    fillCombo(m_secondHeight, PersonalInfoForm::inchChoices());
    fillCombo(m_gender, PersonalInfoForm::genderChoices());
    m_age->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("-?[0-9]{0,4}")), m_age));

    auto* fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    fields->addRow(labelFor(QStringLiteral("&Name:"), m_name, this), m_name);
    fields->addRow(labelFor(QStringLiteral("&Units:"), m_units, this), m_units);
    auto* height = new QHBoxLayout;
    height->addWidget(m_firstHeight, 1);
    height->addWidget(m_firstUnit);
    height->addWidget(m_secondHeight, 1);
    height->addWidget(m_secondUnit);
    fields->addRow(labelFor(QStringLiteral("&Height:"), m_firstHeight, this), height);
    m_secondHeight->setAccessibleName(QStringLiteral("Height, inches"));
    fields->addRow(labelFor(QStringLiteral("&Age:"), m_age, this), m_age);
    fields->addRow(labelFor(QStringLiteral("&Gender:"), m_gender, this), m_gender);
    body()->addLayout(fields);
    body()->addStretch(1);

    QMenu* resetMenu = menuBar()->addMenu(QStringLiteral("&Reset"));
    QAction* reset = resetMenu->addAction(QStringLiteral("&Personal Information"));
    connect(reset, &QAction::triggered, this, &PersonalInfoDialog::reset);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    using Field = PersonalInfoForm::Field;
    m_nameCommit = new CommitOnLeave(m_name, [this](const QString& text) {
        // A character the files cannot hold leaves the stored name as it was.
        if (const std::optional<std::string> name = fromQString(text)) {
            edit(Field::Name, text);
        }
    });
    m_ageCommit = new CommitOnLeave(m_age, [this](const QString& text) { edit(Field::Age, text); });
    const std::pair<QComboBox*, Field> lists[] = {{m_units, Field::Units},
                                                  {m_firstHeight, Field::FirstHeight},
                                                  {m_secondHeight, Field::SecondHeight},
                                                  {m_gender, Field::Gender}};
    for (const auto& [combo, field] : lists) {
        connect(combo, &QComboBox::activated, this,
                [this, combo, field] { edit(field, combo->currentText()); });
    }
    startBlankListAt(m_firstHeight, [this] { return m_form.view().firstHeightStart; });
    for (auto signal : {&SessionNotifier::dataChanged, &SessionNotifier::personalInfoReset,
                        &SessionNotifier::userChanged}) {
        connect(&notifier, signal, this, [this] { redisplay(); });
    }

    setTabOrder(okButton(), m_name);
    setTabOrder(m_name, m_units);
    setTabOrder(m_units, m_firstHeight);
    setTabOrder(m_firstHeight, m_secondHeight);
    setTabOrder(m_secondHeight, m_age);
    setTabOrder(m_age, m_gender);
    redisplay();
    m_name->setFocus();
}

void PersonalInfoDialog::edit(PersonalInfoForm::Field field, const QString& text) {
    const Outcome outcome = m_form.edit(field, fromQString(text).value_or(std::string()));
    (void)showFailure(this, m_notifier->apply(outcome));
    if (outcome.message) {
        (void)showMessage(this, *outcome.message);
        // The refused age stays as typed, selected, for the person to correct.
        redisplay(false);
        m_age->selectAll();
        m_age->setFocus();
        return;
    }
    redisplay();
}

void PersonalInfoDialog::reset() {
    const auto question = PersonalInfoForm::confirmation(PersonalInfoForm::Command::Reset);
    if (!question || !showMessage(this, *question)) {
        return;
    }
    (void)showOutcome(this, *m_notifier, m_form.command(PersonalInfoForm::Command::Reset));
    redisplay();
}

void PersonalInfoDialog::done(int result) {
    // A name or age still being typed is complete now.
    m_nameCommit->commitIfEdited();
    m_ageCommit->commitIfEdited();
    (void)showFailure(this, m_notifier->save(m_form.close()));
    ScreenDialog::done(result);
}

void PersonalInfoDialog::redisplay(bool showAge) {
    const PersonalInfoView v = m_form.view();
    // The field being typed in keeps what the person typed.
    if (!m_name->hasFocus()) {
        m_name->setText(toQString(v.name));
    }
    m_units->setCurrentIndex(v.units);
    if (m_firstHeight->count() != static_cast<int>(v.firstHeightChoices.size())) {
        fillCombo(m_firstHeight, v.firstHeightChoices);
    }
    m_firstHeight->setCurrentIndex(v.firstHeight);
    m_secondHeight->setCurrentIndex(v.secondHeight);
    m_secondHeight->setVisible(v.secondHeightShown);
    m_firstUnit->setText(toQString(v.firstHeightUnit));
    m_secondUnit->setText(toQString(v.secondHeightUnit));
    m_secondUnit->setVisible(v.secondHeightShown);
    m_firstHeight->setAccessibleName(
        QStringLiteral("Height, ") +
        (v.secondHeightShown ? QStringLiteral("feet") : QStringLiteral("centimetres")));
    if (showAge && !m_age->hasFocus()) {
        m_age->setText(toQString(v.age));
    }
    m_gender->setCurrentIndex(v.gender);
}

}  // namespace nutrovex
