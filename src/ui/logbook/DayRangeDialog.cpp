#include "ui/logbook/DayRangeDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/logbook/LogbookScreen.h"

namespace nutrovex {

DayRangeDialog::DayRangeDialog(DayRangeForm form, SessionNotifier& notifier, QWidget* parent)
    : QDialog(parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_start(new QLabel(this)),
      m_end(new QLabel(this)),
      m_setStart(new QPushButton(QStringLiteral("&Set..."), this)),
      m_setEnd(new QPushButton(QStringLiteral("S&et..."), this)) {
    setWindowTitle(QStringLiteral("Delete Range of Days"));
    setModal(true);
    coverOpener(*this, parent);
    auto* intro = new QLabel(QStringLiteral("Select a range of days"), this);
    auto* startLabel = new QLabel(QStringLiteral("Start:"), this);
    auto* endLabel = new QLabel(QStringLiteral("End:"), this);
    m_start->setAccessibleName(QStringLiteral("Start"));
    m_end->setAccessibleName(QStringLiteral("End"));
    m_setStart->setAccessibleName(QStringLiteral("Set... start date"));
    m_setEnd->setAccessibleName(QStringLiteral("Set... end date"));
    for (QPushButton* b : {m_setStart, m_setEnd}) {
        b->setAutoDefault(false);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setAccessibleName(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleName(QStringLiteral("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* grid = new QGridLayout;
    grid->addWidget(startLabel, 0, 0);
    grid->addWidget(m_start, 0, 1);
    grid->addWidget(m_setStart, 0, 2);
    grid->addWidget(endLabel, 1, 0);
    grid->addWidget(m_end, 1, 1);
    grid->addWidget(m_setEnd, 1, 2);
    grid->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(grid);
    layout->addStretch();
    layout->addWidget(buttons);

    connect(m_setStart, &QPushButton::clicked, this, [this] { pick(true); });
    connect(m_setEnd, &QPushButton::clicked, this, [this] { pick(false); });
    showDates();
}

QString DayRangeDialog::startText() const {
    return m_start->text();
}

QString DayRangeDialog::endText() const {
    return m_end->text();
}

void DayRangeDialog::showDates() {
    const DayRangeView v = m_form.view();
    showFigure(m_start, QStringLiteral("Start"), toQString(v.startText));
    showFigure(m_end, QStringLiteral("End"), toQString(v.endText));
}

void DayRangeDialog::accept() {
    (void)showOutcome(this, *m_notifier, m_form.command(DayRangeForm::Command::Delete));
    QDialog::accept();
}

void DayRangeDialog::pick(bool start) {
    auto* picker = new CalendarPickerDialog(m_form.clock(), this);
    const DayRangeView v = m_form.view();
    const CalendarDate& from = start ? v.start : v.end;
    picker->setDate(from.year, from.month - 1, from.day);
    openChild(picker, [this, picker, start](int result) {
        if (result != QDialog::Accepted) {
            return;
        }
        const CalendarDate picked =
            CalendarDate::fromDmy(picker->day(), picker->month() + 1, picker->year());
        (void)m_form.pickDate(start ? DayRangeForm::Field::Start : DayRangeForm::Field::End,
                              picked);
        showDates();
    });
}

}  // namespace nutrovex
