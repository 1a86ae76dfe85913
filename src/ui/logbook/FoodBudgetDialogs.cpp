#include "ui/logbook/FoodBudgetDialogs.h"

#include <QGroupBox>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

constexpr int kMargin = 8;
constexpr int kValueOffsetUnits = 100;

// A dialog unit across is a quarter of the font's average character width.
int dialogUnitsAcross(const QFontMetrics& metrics, int units) {
    return units * metrics.averageCharWidth() / 4;
}

QFont headingFont(QFont font) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    return font;
}

}  // namespace

FoodBudgetPage::FoodBudgetPage(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(QStringLiteral("Food Budget"));
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
}

void FoodBudgetPage::setSections(std::vector<BudgetSection> sections) {
    m_sections = std::move(sections);
    syncScrollBar();
    viewport()->update();
}

QStringList FoodBudgetPage::shownLines() const {
    QStringList lines;
    for (const BudgetSection& section : m_sections) {
        lines << toQString(section.heading);
        for (const BudgetRow& row : section.rows) {
            lines << figureName(toQString(row.label), toQString(row.value));
        }
    }
    return lines;
}

int FoodBudgetPage::contentHeight() const {
    return lay(viewport()->width(), nullptr);
}

int FoodBudgetPage::lay(int width, QPainter* painter) const {
    const QFont body = font();
    const QFont heading = headingFont(body);
    const QFontMetrics bodyMetrics(body);
    const QFontMetrics headingMetrics(heading);
    const int valueX = kMargin + dialogUnitsAcross(bodyMetrics, kValueOffsetUnits);
    const int textWidth = std::max(width - 2 * kMargin, 40);
    const QColor text = palette().color(QPalette::Text);
    const QColor rule = palette().color(QPalette::Mid);
    int y = kMargin;
    for (const BudgetSection& section : m_sections) {
        const QString title = toQString(section.heading);
        if (painter != nullptr) {
            painter->setFont(heading);
            painter->setPen(text);
            painter->drawText(QRect(kMargin, y, textWidth, headingMetrics.height()),
                              Qt::AlignLeft | Qt::AlignVCenter, title);
            painter->setPen(rule);
            painter->drawLine(kMargin, y + headingMetrics.height() + 1, kMargin + textWidth,
                              y + headingMetrics.height() + 1);
        }
        y += headingMetrics.height() + 4;
        for (const BudgetRow& row : section.rows) {
            const QString value = toQString(row.value);
            if (row.label.empty()) {
                const QRect area(kMargin, y, textWidth, 10000);
                const QRect used = bodyMetrics.boundingRect(area, Qt::TextWordWrap, value);
                if (painter != nullptr) {
                    painter->setFont(body);
                    painter->setPen(text);
                    painter->drawText(area, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, value);
                }
                y += used.height() + 2;
                continue;
            }
            const QRect valueArea(valueX, y, std::max(width - kMargin - valueX, 20), 10000);
            const QRect used = bodyMetrics.boundingRect(valueArea, Qt::TextWordWrap, value);
            if (painter != nullptr) {
                painter->setFont(body);
                painter->setPen(text);
                painter->drawText(QRect(kMargin, y, valueX - kMargin, bodyMetrics.height()),
                                  Qt::AlignLeft | Qt::AlignTop, toQString(row.label));
                painter->drawText(valueArea, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
                                  value);
            }
            y += std::max(used.height(), bodyMetrics.height()) + 2;
        }
        y += bodyMetrics.height() / 2 + 4;
    }
    return y + kMargin;
}

void FoodBudgetPage::syncScrollBar() {
    const int page = viewport()->height();
    verticalScrollBar()->setRange(0, std::max(0, contentHeight() - page));
    verticalScrollBar()->setPageStep(std::max(page, 1));
    verticalScrollBar()->setSingleStep(QFontMetrics(font()).height());
}

void FoodBudgetPage::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    syncScrollBar();
}

void FoodBudgetPage::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.translate(0, -verticalScrollBar()->value());
    (void)lay(viewport()->width(), &painter);
}

FoodBudgetDialog::FoodBudgetDialog(FoodBudgetForm form, SessionNotifier& notifier, QWidget* parent)
    : LogbookScreen(notifier, parent, QStringLiteral("Food Budget")),
      m_form(std::move(form)),
      m_page(new FoodBudgetPage(this)) {
    addOptionsMenu();
    body()->addWidget(m_page, 1);
    connect(&notifier, &SessionNotifier::dataChanged, this, &FoodBudgetDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &FoodBudgetDialog::refresh);
    refresh();
    m_page->setFocus();
}

void FoodBudgetDialog::refresh() {
    dateLine()->setText(toQString(m_form.date()));
    m_page->setSections(m_form.view());
}

FoodBudgetBoxDialog::FoodBudgetBoxDialog(FoodBudgetBoxForm form, SessionNotifier& notifier,
                                         QWidget* parent)
    : LogbookScreen(notifier, parent, QStringLiteral("Food Budget")),
      m_form(std::move(form)),
      m_budget(new QLabel(this)),
      m_caption(new QLabel(this)),
      m_goal(new QLabel(this)) {
    addOptionsMenu();
    auto* budgetBox = new QGroupBox(this);
    auto* goalBox = new QGroupBox(this);
    m_budget->setWordWrap(true);
    m_goal->setWordWrap(true);
    m_caption->setAlignment(Qt::AlignCenter);
    QFont bold = m_caption->font();
    bold.setBold(true);
    m_caption->setFont(bold);
    auto* budgetLayout = new QVBoxLayout(budgetBox);
    budgetLayout->addWidget(m_budget);
    budgetLayout->addWidget(m_caption);
    auto* goalLayout = new QVBoxLayout(goalBox);
    goalLayout->addWidget(m_goal);
    body()->addWidget(budgetBox);
    body()->addWidget(goalBox);
    body()->addStretch();
    m_budget->setAccessibleName(QStringLiteral("Food Budget"));
    m_caption->setAccessibleName(QStringLiteral("Formula"));
    m_goal->setAccessibleName(QStringLiteral("Daily Calorie Goal"));
    connect(&notifier, &SessionNotifier::dataChanged, this, &FoodBudgetBoxDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &FoodBudgetBoxDialog::refresh);
    refresh();
    okButton()->setFocus();

    // The group boxes take their titles from the form.
    const FoodBudgetBox box = m_form.view();
    budgetBox->setTitle(toQString(box.heading));
    goalBox->setTitle(toQString(box.goalHeading));
}

QString FoodBudgetBoxDialog::budgetText() const {
    return m_budget->text();
}

QString FoodBudgetBoxDialog::goalText() const {
    return m_goal->text();
}

void FoodBudgetBoxDialog::refresh() {
    const FoodBudgetBox box = m_form.view();
    dateLine()->setText(toQString(m_form.date()));
    showFigure(m_budget, QStringLiteral("Food Budget"), toQString(box.budgetLine));
    showFigure(m_caption, QStringLiteral("Formula"), toQString(box.caption));
    showFigure(m_goal, QStringLiteral("Daily Calorie Goal"), toQString(box.goalSentence));
}

}  // namespace nutrovex
