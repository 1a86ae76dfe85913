#include "ui/charts/HistoricChartDialog.h"

#include <QActionGroup>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/charts/ChartWidgets.h"
#include "ui/controls/AccessibleText.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// Mnemonics for the span buttons, in span order: the digit or letter that tells them apart.
const char* const kSpanMnemonics[kHistorySpanCount] = {
    "&7 Day", "1&4 Day", "&1 Month", "&3 Month", "&6 Month", "1 &Year", "&5 Year"};

}  // namespace

HistoricChartDialog::HistoricChartDialog(HistoricChartForm form, SessionNotifier& notifier,
                                         QWidget* parent)
    : QDialog(parent),
      m_form(std::move(form)),
      m_menuBar(new QMenuBar(this)),
      m_close(new QPushButton(this)),
      m_title(new QLabel(this)),
      m_chart(new HistoricChartWidget(this)),
      m_trend(new QCheckBox(this)),
      m_trendAction(nullptr),
      m_rate(new QLabel(this)) {
    setModal(true);
    coverOpener(*this, parent);

    const QString closeText = QString::fromLatin1(HistoricChartForm::closeText());
    m_close->setText(QStringLiteral("&") + closeText);
    m_close->setAccessibleName(closeText);
    m_close->setDefault(true);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setAccessibleName(QStringLiteral("Title"));

    auto* spanMenu = m_menuBar->addMenu(QStringLiteral("&Span"));
    auto* spanActions = new QActionGroup(this);
    auto* spanButtons = new QButtonGroup(this);
    auto* spanGrid = new QGridLayout;
    for (uint16_t span = 0; span < kHistorySpanCount; ++span) {
        const QString text = QString::fromLatin1(HistoricChartForm::spanButton(span));
        auto* button = new QRadioButton(QString::fromLatin1(kSpanMnemonics[span]), this);
        button->setAccessibleName(text);
        spanButtons->addButton(button, span);
        spanGrid->addWidget(button, span / 4, span % 4);
        m_spans[span] = button;
        QAction* action = spanMenu->addAction(QString::fromLatin1(kSpanMnemonics[span]));
        action->setCheckable(true);
        spanActions->addAction(action);
        m_spanActions[span] = action;
        const auto command = static_cast<HistoricChartForm::Command>(span);
        connect(button, &QRadioButton::clicked, this, [this, command] { run(command); });
        connect(action, &QAction::triggered, this, [this, command] { run(command); });
    }
    const QString trendText = QString::fromLatin1(HistoricChartForm::trendText());
    m_trend->setText(QStringLiteral("&") + trendText);
    m_trend->setAccessibleName(trendText);
    m_rate->setAccessibleName(QStringLiteral("Weekly rate"));
    auto* viewMenu = m_menuBar->addMenu(QStringLiteral("&View"));
    m_trendAction = viewMenu->addAction(QStringLiteral("&") + trendText);
    m_trendAction->setCheckable(true);
    const auto trend = [this](bool shown) {
        run(shown ? HistoricChartForm::Command::ShowTrend : HistoricChartForm::Command::HideTrend);
    };
    connect(m_trend, &QCheckBox::toggled, this, trend);
    connect(m_trendAction, &QAction::toggled, this, trend);
    (void)addAboutMenu(m_menuBar, this);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);

    auto* top = new QHBoxLayout;
    top->addWidget(m_close);
    top->addSpacing(8);
    top->addWidget(m_title, 1);
    auto* trendRow = new QHBoxLayout;
    trendRow->addWidget(m_trend);
    trendRow->addSpacing(12);
    trendRow->addWidget(m_rate, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    layout->addLayout(top);
    layout->addWidget(m_chart);
    layout->addLayout(trendRow);
    layout->addLayout(spanGrid);
    layout->addStretch(1);

    setTabOrder(m_close, m_spans[0]);
    for (std::size_t i = 1; i < m_spans.size(); ++i) {
        setTabOrder(m_spans[i - 1], m_spans[i]);
    }
    setTabOrder(m_spans.back(), m_trend);

    connect(&notifier, &SessionNotifier::dataChanged, this, &HistoricChartDialog::showForm);
    connect(&notifier, &SessionNotifier::personalInfoReset, this, &HistoricChartDialog::showForm);
    connect(&notifier, &SessionNotifier::dayCreated, this, &HistoricChartDialog::showForm);
    connect(&notifier, &SessionNotifier::userChanged, this, &HistoricChartDialog::showForm);
    showForm();
    m_close->setFocus();
}

void HistoricChartDialog::run(HistoricChartForm::Command command) {
    (void)m_form.command(command);
    showForm();
}

void HistoricChartDialog::showForm() {
    const HistoricChartView v = m_form.view();
    const QString title = QString::fromLatin1(v.title.c_str());
    setWindowTitle(title);
    showFigure(m_title, QStringLiteral("Title"), title);
    m_chart->setAccessibleName(title);
    m_spans[v.span]->setChecked(true);
    m_spanActions[v.span]->setChecked(true);
    {
        const QSignalBlocker blockBox(m_trend);
        const QSignalBlocker blockAction(m_trendAction);
        m_trend->setChecked(v.trendShown);
        m_trendAction->setChecked(v.trendShown);
    }
    showFigure(m_rate, QStringLiteral("Weekly rate"), QString::fromLatin1(v.rateText.c_str()));
    m_rate->setVisible(v.trendShown);
    m_chart->setHistory(v.history, v.trend);
}

}  // namespace nutrovex
