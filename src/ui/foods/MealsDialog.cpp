#include "ui/foods/MealsDialog.h"

#include <QAction>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <utility>

#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

MealsDialog::MealsDialog(MealsForm form, SessionNotifier& notifier, QWidget* parent,
                         FoodOpeners openers)
    : FoodScreen(parent, QStringLiteral("Meals"), true),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_openers(std::move(openers)),
      m_date(new QLabel(this)) {
    QPushButton* ok = addButton(QStringLiteral("OK"));
    QPushButton* toggle = addButton(QStringLiteral("Toggle &Nutrients"));
    QPushButton* all = addButton(QStringLiteral("A&ll Foods"));
    all->setAccessibleName(toQString(kFoodGroupNames[kAllFoodsGroup]));
    buttonRow()->addStretch();
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(toggle, &QPushButton::clicked, this, &MealsDialog::toggleNutrients);
    connect(all, &QPushButton::clicked, this, [this] { openGroup(kAllFoodsGroup); });

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    options->addAction(QStringLiteral("&Toggle Nutrients"), this, &MealsDialog::toggleNutrients);
    options->addSeparator();
    (void)addAboutCommand(options, this);
    QMenu* foods = menuBar()->addMenu(QStringLiteral("&Foods"));
    for (int g = 0; g <= kAllFoodsGroup; ++g) {
        foods->addAction(toQString(kFoodGroupNames[g]), this, [this, g] { openGroup(g); });
    }

    m_date->setAlignment(Qt::AlignCenter);
    m_date->setAccessibleName(QStringLiteral("Date"));
    content()->addWidget(m_date);

    auto* cells = new QGridLayout;
    const int icon = fontMetrics().height() * 3;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const auto gi = static_cast<std::size_t>(g);
        auto* cell = new QFrame(this);
        cell->setFrameShape(QFrame::StyledPanel);
        auto* layout = new QGridLayout(cell);
        layout->setContentsMargins(4, 4, 4, 4);
        auto* button = new QToolButton(cell);
        button->setIcon(QIcon(foodGroupArt(g)));
        button->setIconSize(QSize(icon, icon));
        button->setAutoRaise(true);
        button->setAccessibleName(toQString(kFoodGroupNames[g]));
        button->setToolTip(toQString(kFoodGroupNames[g]));
        connect(button, &QToolButton::clicked, this, [this, g] { openGroup(g); });
        m_groups[gi] = button;
        layout->addWidget(button, 0, 0, 3, 1);
        for (int line = 0; line < 3; ++line) {
            const auto li = static_cast<std::size_t>(line);
            m_labels[gi][li] = new QLabel(cell);
            m_values[gi][li] = new QLabel(cell);
            m_values[gi][li]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            layout->addWidget(m_labels[gi][li], line, 1);
            layout->addWidget(m_values[gi][li], line, 2);
        }
        layout->setColumnStretch(2, 1);
        cells->addWidget(cell, g / 2, g % 2);
    }
    content()->addLayout(cells, 1);

    auto* summary = new QFrame(this);
    summary->setFrameShape(QFrame::StyledPanel);
    auto* sl = new QGridLayout(summary);
    auto* title = new QLabel(QString::fromLatin1(kSummaryLabel), summary);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    sl->addWidget(title, 0, 0, 1, 4);
    for (std::size_t c = 0; c < 2; ++c) {
        for (std::size_t line = 0; line < 3; ++line) {
            m_summaryLabels[c][line] = new QLabel(summary);
            m_summaryValues[c][line] = new QLabel(summary);
            m_summaryValues[c][line]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            sl->addWidget(m_summaryLabels[c][line], static_cast<int>(line) + 1,
                          static_cast<int>(2 * c));
            sl->addWidget(m_summaryValues[c][line], static_cast<int>(line) + 1,
                          static_cast<int>(2 * c) + 1);
        }
    }
    sl->setColumnStretch(1, 1);
    sl->setColumnStretch(3, 1);
    m_targets = new QLabel(summary);
    m_targets->setWordWrap(true);
    m_targets->setAccessibleName(QStringLiteral("Targets"));
    sl->addWidget(m_targets, 4, 0, 1, 4);
    content()->addWidget(summary);

    for (auto signal : {&SessionNotifier::dataChanged, &SessionNotifier::dayCreated,
                        &SessionNotifier::userChanged, &SessionNotifier::personalInfoReset}) {
        connect(&notifier, signal, this, &MealsDialog::refresh);
    }
    refresh();
    ok->setFocus();
}

void MealsDialog::refresh() {
    const MealsView v = m_form.view();
    showFigure(m_date, QStringLiteral("Date"), toQString(v.date));
    for (std::size_t g = 0; g < 8; ++g) {
        const MealsColumn& cell = v.groups[g];
        for (std::size_t line = 0; line < 3; ++line) {
            m_labels[g][line]->setText(toQString(cell.labels[line]));
            showFigure(
                m_values[g][line],
                toQString(kFoodGroupNames[g]) + QStringLiteral(" ") + toQString(cell.labels[line]),
                toQString(cell.values[line]));
        }
    }
    for (std::size_t c = 0; c < 2; ++c) {
        for (std::size_t line = 0; line < 3; ++line) {
            m_summaryLabels[c][line]->setText(toQString(v.summary[c].labels[line]));
            showFigure(m_summaryValues[c][line],
                       QStringLiteral("Summary ") + toQString(v.summary[c].labels[line]),
                       toQString(v.summary[c].values[line]));
        }
    }
    QStringList targets;
    for (const std::string& line : v.targetLines) {
        targets << toQString(line);
    }
    m_targets->setText(targets.join(QLatin1Char('\n')));
    m_targets->setVisible(!targets.isEmpty());
}

QString MealsDialog::groupValue(int group, int line) const {
    return m_values[static_cast<std::size_t>(group)][static_cast<std::size_t>(line)]->text();
}

QString MealsDialog::summaryValue(int column, int line) const {
    return m_summaryValues[static_cast<std::size_t>(column)][static_cast<std::size_t>(line)]
        ->text();
}

void MealsDialog::toggleNutrients() {
    (void)m_form.command(MealsForm::Command::ToggleNutrients);
    refresh();
}

void MealsDialog::openGroup(int group) {
    FoodGridDialog grid(m_form.groupForm(group), *m_notifier, this, m_openers);
    grid.exec();
    refresh();
}

void MealsDialog::done(int result) {
    showFailure(this, m_notifier->save(m_form.close()));
    FoodScreen::done(result);
}

}  // namespace nutrovex
