#include "ui/controls/CalendarPickerDialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/MonthGrid.h"

namespace nutrovex {

CalendarPickerDialog::CalendarPickerDialog(const Clock& clock, QWidget* parent)
    : QDialog(parent),
      m_grid(new MonthGrid(clock, this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this)) {
    setWindowTitle(QStringLiteral("Calendar"));
    m_ok->setDefault(true);
    m_ok->setAutoDefault(true);
    m_cancel->setAutoDefault(false);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_grid->setFocus();
}

void CalendarPickerDialog::setCaption(const QString& caption) {
    if (!caption.isEmpty()) {
        setWindowTitle(caption);
    }
}

void CalendarPickerDialog::setDate(int year, int month, int day) {
    m_grid->setDate(year, month, day);
}

int CalendarPickerDialog::year() const {
    return m_grid->calendar().year();
}

int CalendarPickerDialog::month() const {
    return m_grid->calendar().month();
}

int CalendarPickerDialog::day() const {
    return m_grid->calendar().day();
}

int CalendarPickerDialog::weekday() const {
    return m_grid->calendar().weekdayOf(day());
}

}  // namespace nutrovex
