#include "ui/charts/BodyMassChartDialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "render/ChartPainter.h"
#include "ui/charts/ChartWidgets.h"
#include "ui/controls/AccessibleText.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// A legend swatch: a band's colour with its two letters, or a short piece of the current or the
// goal line, in the chart's own colours.
class LegendSwatch : public QWidget {
public:
    enum class Kind { Band, CurrentLine, GoalLine };
    LegendSwatch(Kind kind, int band, const QString& text, QWidget* parent)
        : QWidget(parent), m_kind(kind), m_band(band), m_text(text) {
        setAccessibleName(text.isEmpty() ? QStringLiteral("Line") : text);
    }
    [[nodiscard]] QSize sizeHint() const override {
        const int h = fontMetrics().height() + 6;
        return {std::max(fontMetrics().horizontalAdvance(QStringLiteral("Ob")) + 14, 2 * h), h};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        const ChartColours colours = chartColours(palette());
        const QRect box = rect().adjusted(0, 0, -1, -1);
        if (m_kind == Kind::Band) {
            p.fillRect(box, colours.bands[static_cast<std::size_t>(m_band)]);
            p.setPen(colours.ink);
            p.drawRect(box);
            p.drawText(box, Qt::AlignCenter, m_text);
            return;
        }
        const bool goal = m_kind == Kind::GoalLine;
        p.setPen(QPen(goal ? colours.goal : colours.ink, 2, goal ? Qt::DashLine : Qt::SolidLine));
        p.drawLine(2, height() / 2, width() - 3, height() / 2);
    }

private:
    Kind m_kind;
    int m_band;
    QString m_text;
};

}  // namespace

BodyMassChartDialog::BodyMassChartDialog(BodyMassChartForm form, SessionNotifier& notifier,
                                         QWidget* parent)
    : QDialog(parent),
      m_form(std::move(form)),
      m_menuBar(new QMenuBar(this)),
      m_ok(new QPushButton(this)),
      m_chart(new BodyMassChartWidget(this)),
      m_current(new QLabel(this)),
      m_goal(new QLabel(this)) {
    setModal(true);
    coverOpener(*this, parent);
    const QString title = QString::fromLatin1(BodyMassChartForm::title());
    setWindowTitle(title);

    const QString okText = QString::fromLatin1(BodyMassChartForm::okText());
    m_ok->setText(QStringLiteral("&") + okText);
    m_ok->setAccessibleName(okText);
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* chartMenu = m_menuBar->addMenu(QStringLiteral("&Chart"));
    chartMenu->addAction(QStringLiteral("&Close"), this, &QDialog::accept);
    (void)addAboutMenu(m_menuBar, this);

    auto* heading = new QLabel(title, this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* top = new QHBoxLayout;
    top->addWidget(m_ok);
    top->addSpacing(8);
    top->addWidget(heading, 1);

    // The legend: the four bands in two rows, then the two lines.
    auto* legend = new QGridLayout;
    for (int band = 0; band < 4; ++band) {
        const BandLegend& entry = kBandLegend[static_cast<std::size_t>(band)];
        auto* swatch = new LegendSwatch(LegendSwatch::Kind::Band, band,
                                        QString::fromLatin1(entry.swatch), this);
        auto* text = new QLabel(QString::fromLatin1(entry.text), this);
        legend->addWidget(swatch, band / 2, (band % 2) * 2);
        legend->addWidget(text, band / 2, (band % 2) * 2 + 1);
    }
    const auto lineRow = [&](LegendSwatch::Kind kind, const char* name, QLabel* value, int row) {
        auto* swatch = new LegendSwatch(kind, 0, QString(), this);
        swatch->setAccessibleName(QString::fromLatin1(name));
        auto* text = new QLabel(QString::fromLatin1(name), this);
        value->setAccessibleName(QString::fromLatin1(name));
        legend->addWidget(swatch, row, 0);
        legend->addWidget(text, row, 1);
        legend->addWidget(value, row, 2, 1, 2);
    };
    lineRow(LegendSwatch::Kind::CurrentLine, BodyMassChartForm::currentText(), m_current, 2);
    lineRow(LegendSwatch::Kind::GoalLine, BodyMassChartForm::goalText(), m_goal, 3);
    legend->setColumnStretch(1, 1);
    legend->setColumnStretch(3, 1);

    m_chart->setAccessibleName(title);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    layout->addLayout(top);
    layout->addWidget(m_chart, 1);
    layout->addLayout(legend);

    connect(&notifier, &SessionNotifier::dataChanged, this, &BodyMassChartDialog::refresh);
    connect(&notifier, &SessionNotifier::personalInfoReset, this, &BodyMassChartDialog::refresh);
    connect(&notifier, &SessionNotifier::dayCreated, this, &BodyMassChartDialog::refresh);
    connect(&notifier, &SessionNotifier::userChanged, this, &BodyMassChartDialog::refresh);
    refresh();
    m_ok->setFocus();
}

bool BodyMassChartDialog::openChecked(BodyMassChartForm form, SessionNotifier& notifier,
                                      QWidget* parent) {
    if (const std::optional<ScreenMessage> refusal = form.openRefusal()) {
        showMessage(parent, *refusal);
        return false;
    }
    BodyMassChartDialog dialog(std::move(form), notifier, parent);
    dialog.exec();
    return true;
}

void BodyMassChartDialog::refresh() {
    const BodyMassChartView v = m_form.view();
    m_chart->setChart(v.chart);
    showFigure(m_current, QString::fromLatin1(BodyMassChartForm::currentText()),
               QString::fromLatin1(v.currentSummary.c_str()));
    showFigure(m_goal, QString::fromLatin1(BodyMassChartForm::goalText()),
               QString::fromLatin1(v.goalSummary.c_str()));
}

}  // namespace nutrovex
