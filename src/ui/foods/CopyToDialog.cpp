#include "ui/foods/CopyToDialog.h"
#include "ui/controls/AccessibleText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>

#include "ui/TextConvert.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

void fill(QComboBox* list, const std::vector<std::string>& texts, int selected) {
    const QSignalBlocker block(list);
    list->clear();
    for (const std::string& t : texts) {
        list->addItem(toQString(t));
    }
    list->setCurrentIndex(selected);
}

}  // namespace

CopyToDialog::CopyToDialog(CopyToForm form, SessionNotifier& notifier, QWidget* parent)
    : ScreenDialog(QString::fromLatin1(CopyToForm::caption()), parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_from(new QLabel(this)),
      m_what(new QComboBox(this)),
      m_date(new QLabel(this)),
      m_setDate(new QPushButton(QStringLiteral("&Set..."), this)),
      m_people(new QComboBox(this)),
      m_copy(new QPushButton(QStringLiteral("&Copy"), this)),
      m_result(new QLabel(this)) {
    m_from->setWordWrap(true);
    setFigureCaption(m_from, QStringLiteral("From"));
    body()->addWidget(m_from);

    auto* grid = new QGridLayout;
    auto* whatLabel = new QLabel(QStringLiteral("&What:"), this);
    whatLabel->setBuddy(m_what);
    m_what->setAccessibleName(QStringLiteral("What"));
    auto* dateLabel = new QLabel(QStringLiteral("To date:"), this);
    setFigureCaption(m_date, QStringLiteral("To date"));
    m_setDate->setAccessibleName(QStringLiteral("Set... To date"));
    auto* personLabel = new QLabel(QStringLiteral("To &person:"), this);
    personLabel->setBuddy(m_people);
    m_people->setAccessibleName(QStringLiteral("To person"));
    grid->addWidget(whatLabel, 0, 0);
    grid->addWidget(m_what, 0, 1, 1, 2);
    grid->addWidget(dateLabel, 1, 0);
    grid->addWidget(m_date, 1, 1);
    grid->addWidget(m_setDate, 1, 2);
    grid->addWidget(personLabel, 2, 0);
    grid->addWidget(m_people, 2, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(10);
    body()->addLayout(grid);

    m_copy->setAccessibleName(QStringLiteral("Copy"));
    m_copy->setDefault(true);
    auto* copyRow = new QHBoxLayout;
    copyRow->addWidget(m_copy);
    copyRow->addStretch(1);
    body()->addLayout(copyRow);
    m_result->setWordWrap(true);
    m_result->setAccessibleName(QStringLiteral("Copied"));
    body()->addWidget(m_result);
    body()->addStretch(1);
    m_setDate->setAutoDefault(false);

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    connect(m_what, &QComboBox::activated, this, [this](int index) {
        (void)m_form.edit(CopyToForm::Field::What,
                          fromQString(m_what->itemText(index)).value_or(std::string()));
        redisplay();
    });
    connect(m_people, &QComboBox::activated, this, [this](int index) {
        (void)m_form.edit(CopyToForm::Field::Person,
                          fromQString(m_people->itemText(index)).value_or(std::string()));
        redisplay();
    });
    connect(m_setDate, &QPushButton::clicked, this, &CopyToDialog::pickDate);
    connect(m_copy, &QPushButton::clicked, this, &CopyToDialog::copy);
    connect(&notifier, &SessionNotifier::dataChanged, this, &CopyToDialog::redisplay);

    setTabOrder(okButton(), m_what);
    setTabOrder(m_what, m_setDate);
    setTabOrder(m_setDate, m_people);
    setTabOrder(m_people, m_copy);
    redisplay();
    m_what->setFocus();
}

void CopyToDialog::redisplay() {
    const CopyToView v = m_form.view();
    showFigure(m_from, toQString(v.from));
    fill(m_what, v.choices, v.choice);
    showFigure(m_date, toQString(v.date));
    fill(m_people, v.people, v.person);
    m_copy->setEnabled(v.canCopy);
    m_result->setText(toQString(v.result));
}

void CopyToDialog::pickDate() {
    const CalendarDate shown = m_form.view().target;
    CalendarPickerDialog picker(m_form.clock(), this);
    picker.setCaption(QStringLiteral("Copy To"));
    picker.setDate(shown.year, shown.month - 1, shown.day);
    if (picker.exec() != QDialog::Accepted) {
        return;
    }
    m_form.pickDate(CalendarDate::fromDmy(picker.day(), picker.month() + 1, picker.year()));
    redisplay();
}

void CopyToDialog::copy() {
    if (!m_form.view().canCopy) {
        return;
    }
    (void)showOutcome(this, *m_notifier, m_form.command(CopyToForm::Command::Copy));
    redisplay();
}

void CopyToDialog::done(int result) {
    (void)showFailure(this, m_notifier->save(m_form.close()));
    ScreenDialog::done(result);
}

}  // namespace nutrovex
