#include "ui/logbook/WeighInDialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

WeighInDialog::WeighInDialog(WeighInForm form, SessionNotifier& notifier, QWidget* parent,
                             ScreenOpener weightChart)
    : LogbookScreen(notifier, parent, QStringLiteral("Weigh In")),
      m_form(std::move(form)),
      m_date(new QLabel(this)),
      m_weight(new QLineEdit(this)),
      m_unit(new QLabel(this)) {
    addOptionsMenu([this, weightChart](QMenu* menu) {
        QAction* chart = menu->addAction(QStringLiteral("&Weight Chart"));
        chart->setEnabled(static_cast<bool>(weightChart));
        if (weightChart) {
            connect(chart, &QAction::triggered, this, [this, weightChart] { weightChart(this); });
        }
    });

    m_date->setAlignment(Qt::AlignCenter);
    m_date->setAccessibleName(QStringLiteral("Date"));
    auto* box = new QGroupBox(QStringLiteral("Weight"), this);
    auto* label = new QLabel(QStringLiteral("&Weight:"), box);
    label->setBuddy(m_weight);
    m_weight->setMaxLength(static_cast<int>(kWeightMaxChars));
    m_weight->setValidator(new QIntValidator(0, 999, m_weight));
    m_weight->setAccessibleName(QStringLiteral("Weight:"));
    m_weight->setMaximumWidth(m_weight->fontMetrics().horizontalAdvance(QStringLiteral("0000")) +
                              16);
    m_unit->setAccessibleName(QStringLiteral("Unit"));
    auto* advice = new QLabel(toQString(kWeighInAdvice), box);
    auto* timing = new QLabel(toQString(kWeighInTimingAdvice), box);
    for (QLabel* l : {advice, timing}) {
        l->setWordWrap(true);
        l->setAccessibleName(l->text());
    }

    auto* grid = new QGridLayout(box);
    grid->addWidget(m_date, 0, 0, 1, 4);
    grid->addWidget(label, 1, 0);
    grid->addWidget(m_weight, 1, 1);
    grid->addWidget(m_unit, 1, 2);
    grid->setColumnStretch(3, 1);
    grid->addWidget(advice, 2, 0, 1, 4);
    grid->addWidget(timing, 3, 0, 1, 4);
    grid->setRowStretch(4, 1);
    body()->addWidget(box, 1);

    // textEdited reports only the person's typing, never the screen's own writes; what the
    // screen announces then does not rewrite the weight under the person's fingers.
    connect(m_weight, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_typing = true;
        (void)showOutcome(this, this->notifier(),
                          m_form.edit(WeighInForm::Field::Weight, text.toStdString()));
        m_typing = false;
    });
    connect(&notifier, &SessionNotifier::dataChanged, this, &WeighInDialog::load);
    connect(&notifier, &SessionNotifier::userChanged, this, &WeighInDialog::load);
    load();
    m_weight->setFocus();
}

void WeighInDialog::done(int result) {
    (void)showFailure(this, notifier().save(m_form.close()));
    LogbookScreen::done(result);
}

void WeighInDialog::load() {
    if (m_typing) {
        return;
    }
    const WeighInView v = m_form.view();
    showFigure(m_date, QStringLiteral("Date"), toQString(v.date));
    m_weight->setText(toQString(v.weight));
    showFigure(m_unit, QStringLiteral("Unit"), toQString(v.unit));
}

}  // namespace nutrovex
