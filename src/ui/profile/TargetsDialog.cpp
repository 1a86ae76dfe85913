#include "ui/profile/TargetsDialog.h"
#include "ui/controls/AccessibleText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// The lines' labels with their mnemonics, in kTargetNutrients order.
constexpr const char* kLabels[kTargetNutrientCount] = {
    "&Protein:", "&Carbohydrate:", "F&at:", "F&iber:", "Saturated fat (&limit):"};

const QString kGrams = QStringLiteral("g");
const QString kPercent = QStringLiteral("% of food budget");

}  // namespace

TargetsDialog::TargetsDialog(TargetsForm form, SessionNotifier& notifier, QWidget* parent)
    : ScreenDialog(QString::fromLatin1(TargetsForm::caption()), parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_budget(new QLabel(this)),
      m_notice(new QLabel(this)),
      m_present([this](const ScreenMessage& m) { (void)showMessage(this, m); }) {
    auto* intro = new QLabel(
        QStringLiteral("Daily targets, each in grams or as a share of the day's food budget "
                       "(4 calories a gram of protein or carbohydrate, 9 of fat). Leave a line "
                       "empty for no target."),
        this);
    intro->setWordWrap(true);
    body()->addWidget(intro);

    auto* grid = new QGridLayout;
    QWidget* previous = okButton();
    for (const TargetNutrient n : kTargetNutrients) {
        const auto i = static_cast<std::size_t>(n);
        const int row = static_cast<int>(i);
        auto* label = new QLabel(QString::fromLatin1(kLabels[i]), this);
        auto* amount = new QLineEdit(this);
        auto* kind = new QComboBox(this);
        auto* equivalent = new QLabel(this);
        label->setBuddy(amount);
        const QString name = toQString(targetLabel(n));
        amount->setAccessibleName(name);
        amount->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("[0-9]{0,4}(\\.[0-9]?)?")), amount));
        amount->setMaximumWidth(amount->fontMetrics().horizontalAdvance(QStringLiteral("0")) * 10);
        kind->setAccessibleName(name + QStringLiteral(" unit"));
        kind->addItem(kGrams);
        if (caloriesPerGram(n)) {
            kind->addItem(kPercent);
        } else {
            kind->setEnabled(false);
        }
        setFigureCaption(equivalent, name + QStringLiteral(" on this day"));
        grid->addWidget(label, row, 0);
        grid->addWidget(amount, row, 1);
        grid->addWidget(kind, row, 2);
        grid->addWidget(equivalent, row, 3);
        m_amounts[i] = amount;
        m_kinds[i] = kind;
        m_equivalents[i] = equivalent;

        connect(amount, &QLineEdit::textEdited, this, [this, n](const QString& text) {
            (void)m_form.edit(n, TargetsForm::Field::Amount, text.toStdString());
            redisplay();
        });
        connect(kind, &QComboBox::activated, this, [this, n](int index) {
            (void)m_form.edit(n, TargetsForm::Field::Kind, index == 1 ? "%" : "g");
            redisplay();
        });
        setTabOrder(previous, amount);
        setTabOrder(amount, kind);
        previous = kind;
    }
    grid->setColumnStretch(3, 1);
    grid->setVerticalSpacing(10);
    body()->addLayout(grid);

    m_budget->setWordWrap(true);
    setFigureCaption(m_budget, QStringLiteral("Food budget"));
    body()->addWidget(m_budget);
    m_notice->setWordWrap(true);
    m_notice->setAccessibleName(QStringLiteral("Notice"));
    body()->addWidget(m_notice);
    body()->addStretch(1);

    QMenu* targets = menuBar()->addMenu(QStringLiteral("&Targets"));
    targets->addAction(QStringLiteral("Clea&r All"), this,
                       [this] { run(TargetsForm::Command::Clear); });
    targets->addAction(QStringLiteral("Re&vert to Saved"), this,
                       [this] { run(TargetsForm::Command::Revert); });
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    connect(&notifier, &SessionNotifier::dataChanged, this, &TargetsDialog::redisplay);
    redisplay();
    m_amounts[0]->setFocus();
}

void TargetsDialog::setMessagePresenter(std::function<void(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void TargetsDialog::run(TargetsForm::Command command) {
    (void)showFailure(this, m_notifier->apply(m_form.command(command)));
    redisplay();
}

void TargetsDialog::redisplay() {
    const TargetsView v = m_form.view();
    for (std::size_t i = 0; i < v.rows.size(); ++i) {
        const TargetRowView& row = v.rows[i];
        if (m_amounts[i]->text() != toQString(row.amount)) {
            m_amounts[i]->setText(toQString(row.amount));
        }
        m_amounts[i]->setEnabled(v.editable);
        {
            const QSignalBlocker block(m_kinds[i]);
            m_kinds[i]->setCurrentIndex(row.percent ? 1 : 0);
        }
        m_kinds[i]->setEnabled(v.editable && row.percentAllowed);
        showFigure(m_equivalents[i], toQString(row.equivalent));
    }
    showFigure(m_budget, toQString(v.budgetLine));
    m_notice->setText(toQString(v.notice));
    m_notice->setVisible(!v.notice.empty());
}

void TargetsDialog::done(int result) {
    const Outcome outcome = m_form.command(TargetsForm::Command::Save);
    if (outcome.message) {
        // The set stays on screen to be put right.
        m_present(*outcome.message);
        return;
    }
    (void)showFailure(this, m_notifier->apply(outcome));
    ScreenDialog::done(result);
}

}  // namespace nutrovex
