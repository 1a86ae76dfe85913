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

#include "calc/PersonalInfoForm.h"
#include "core/UserProfile.h"
#include "session/Session.h"
#include "ui/TextConvert.h"
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

PersonalInfoDialog::PersonalInfoDialog(SessionNotifier& notifier, QWidget* parent)
    : ScreenDialog(QStringLiteral("Personal Information"), parent),
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

    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(labelFor(QStringLiteral("&Name:"), m_name, this), m_name);
    form->addRow(labelFor(QStringLiteral("&Units:"), m_units, this), m_units);
    auto* height = new QHBoxLayout;
    height->addWidget(m_firstHeight, 1);
    height->addWidget(m_firstUnit);
    height->addWidget(m_secondHeight, 1);
    height->addWidget(m_secondUnit);
    form->addRow(labelFor(QStringLiteral("&Height:"), m_firstHeight, this), height);
    m_secondHeight->setAccessibleName(QStringLiteral("Height, inches"));
    form->addRow(labelFor(QStringLiteral("&Age:"), m_age, this), m_age);
    form->addRow(labelFor(QStringLiteral("&Gender:"), m_gender, this), m_gender);
    body()->addLayout(form);
    body()->addStretch(1);

    QMenu* resetMenu = menuBar()->addMenu(QStringLiteral("&Reset"));
    QAction* reset = resetMenu->addAction(QStringLiteral("&Personal Information"));
    connect(reset, &QAction::triggered, this, &PersonalInfoDialog::reset);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    connect(m_name, &QLineEdit::textEdited, this, &PersonalInfoDialog::save);
    connect(m_age, &QLineEdit::textEdited, this, &PersonalInfoDialog::save);
    for (QComboBox* combo : {m_units, m_firstHeight, m_secondHeight, m_gender}) {
        connect(combo, &QComboBox::activated, this, &PersonalInfoDialog::save);
    }
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

void PersonalInfoDialog::save() {
    UserProfile& profile = m_notifier->session().store().profile;
    PersonalInfoForm form(profile);
    PersonalInfoEntry entry;
    // A character the files cannot hold leaves the stored name as it was.
    entry.name = fromQString(m_name->text()).value_or(std::string(profile.displayName()));
    entry.units = m_units->currentIndex();
    entry.firstHeight = m_firstHeight->currentIndex();
    entry.secondHeight = m_secondHeight->currentIndex();
    entry.age = m_age->text().toStdString();
    entry.gender = m_gender->currentIndex();
    const Outcome outcome = form.save(entry);
    if (outcome.notices.any()) {
        (void)showFailure(this, m_notifier->applyAndSave(outcome.notices));
    }
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
    if (!showMessage(this, PersonalInfoForm::confirmReset())) {
        return;
    }
    PersonalInfoForm form(m_notifier->session().store().profile);
    (void)showFailure(this, m_notifier->applyAndSave(form.reset()));
    redisplay();
}

void PersonalInfoDialog::redisplay(bool showAge) {
    const PersonalInfoView v = PersonalInfoForm(m_notifier->session().store().profile).view();
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
