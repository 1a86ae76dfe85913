#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <algorithm>

#include "forms/charts/HistoricChartForm.h"
#include "render/ChartPainter.h"
#include "ui/Screenshot.h"
#include "ui/charts/ChartScreenFixture.h"
#include "ui/charts/ChartWidgets.h"
#include "ui/charts/HistoricChartDialog.h"

namespace nutrovex {
namespace {

using test::countColour;
using test::paintedImage;
using test::sameColour;

// Where the painted plot's frame lies: found by scanning the picture for the frame's ink.
struct FoundPlot {
    int left = -1, right = -1, top = -1, bottom = -1;
};

FoundPlot findPlot(const QImage& image, const QColor& ink) {
    // The frame's sides are the longest runs of ink down a column, its edges across a row.
    std::vector<int> columns(static_cast<std::size_t>(image.width()), 0);
    std::vector<int> rows(static_cast<std::size_t>(image.height()), 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (sameColour(image.pixel(x, y), ink)) {
                ++columns[static_cast<std::size_t>(x)];
                ++rows[static_cast<std::size_t>(y)];
            }
        }
    }
    FoundPlot p;
    const int tallest = *std::max_element(columns.begin(), columns.end());
    const int widest = *std::max_element(rows.begin(), rows.end());
    for (int x = 0; x < image.width(); ++x) {
        if (columns[static_cast<std::size_t>(x)] * 10 >= tallest * 9) {
            p.left = p.left < 0 ? x : p.left;
            p.right = x;
        }
    }
    for (int y = 0; y < image.height(); ++y) {
        if (rows[static_cast<std::size_t>(y)] * 10 >= widest * 9) {
            p.top = p.top < 0 ? y : p.top;
            p.bottom = y;
        }
    }
    return p;
}

// Rows in which at least half the plot's width is in the colour.
int fullRows(const QImage& image, const FoundPlot& plot, const QColor& colour) {
    int rows = 0;
    for (int y = plot.top; y <= plot.bottom; ++y) {
        int n = 0;
        for (int x = plot.left; x <= plot.right; ++x) {
            n += sameColour(image.pixel(x, y), colour) ? 1 : 0;
        }
        rows += n * 2 >= plot.right - plot.left ? 1 : 0;
    }
    return rows;
}

// Runs of consecutive rows in which the test holds for some pixel of the columns.
template <typename Test>
int rowRuns(const QImage& image, int fromX, int toX, int fromY, int toY, Test test) {
    int runs = 0;
    bool inRun = false;
    for (int y = fromY; y <= toY; ++y) {
        bool hit = false;
        for (int x = fromX; x <= toX && !hit; ++x) {
            hit = test(image.pixel(x, y));
        }
        runs += hit && !inRun ? 1 : 0;
        inRun = hit;
    }
    return runs;
}

class HistoricChartScreen : public test::ChartScreenFixture {
protected:
    std::unique_ptr<HistoricChartDialog> open() {
        auto dialog = std::make_unique<HistoricChartDialog>(
            HistoricChartForm(session.days(), chartSettings), notifier, nullptr);
        dialog->show();
        QApplication::processEvents();
        return dialog;
    }

    template <typename T>
    T* child(QWidget& parent, const QString& accessibleName) {
        for (T* w : parent.findChildren<T*>()) {
            if (w->accessibleName() == accessibleName) {
                return w;
            }
        }
        ADD_FAILURE() << "no control named " << accessibleName.toStdString();
        return nullptr;
    }

    MemoryChartSettings chartSettings;
};

TEST_F(HistoricChartScreen, From150To182ThirteenLinesElevenLabelsAndTheWeightLine) {
    weigh(2, 5, 2002, 150.0f);
    weigh(9, 5, 2002, 170.0f);
    weigh(16, 5, 2002, 182.0f);
    chartSettings.setSpan(1);
    const auto dialog = open();
    HistoricChartWidget& chart = *dialog->chart();
    const QImage image = paintedImage(chart);
    test::saveScreenshot(*dialog, QStringLiteral("historic-chart-14-day"));
    const ChartColours colours = chartColours(chart.palette());

    const FoundPlot plot = findPlot(image, colours.ink);
    ASSERT_GT(plot.left, 0);
    ASSERT_GT(plot.bottom, plot.top);
    EXPECT_EQ(plot.bottom + 25, chart.width() / 2);  // the area is at most half as high as wide

    // A column near the right edge, clear of the weight line: the frame's two edges and eleven
    // grid lines between them.
    const int column = plot.right - 2;
    const auto isGrid = [&](QRgb px) { return sameColour(px, colours.grid); };
    EXPECT_EQ(rowRuns(image, column, column, plot.top + 1, plot.bottom - 1, isGrid), 11);
    EXPECT_TRUE(sameColour(image.pixel(column, plot.top), colours.ink));
    EXPECT_TRUE(sameColour(image.pixel(column, plot.bottom), colours.ink));

    // Eleven value labels left of the plot, none for the outer lines, and the unit above them.
    const auto isInk = [&](QRgb px) { return !sameColour(px, colours.face) && !isGrid(px); };
    EXPECT_EQ(rowRuns(image, 0, plot.left - 3, plot.top + 1, plot.bottom, isInk), 11);
    EXPECT_EQ(rowRuns(image, 0, plot.left - 3, 0, plot.top - 1, isInk), 1);
    // The date labels under the plot stand apart: inked columns come in runs (one label each,
    // its letters closer than the gap) with clear space between them, and the newest date ends
    // near the plot's right end.
    std::vector<std::pair<int, int>> labels;  // first and last inked column
    for (int px = 0; px < image.width(); ++px) {
        bool inked = false;
        for (int py = plot.bottom + 3; py < std::min(plot.bottom + 25, image.height()); ++py) {
            inked = inked || isInk(image.pixel(px, py));
        }
        if (!inked) {
            continue;
        }
        if (!labels.empty() && px - labels.back().second < 6) {
            labels.back().second = px;
        } else {
            labels.emplace_back(px, px);
        }
    }
    ASSERT_GE(labels.size(), 2u);
    EXPECT_LE(labels.size(), 8u);
    for (std::size_t k = 1; k < labels.size(); ++k) {
        EXPECT_GE(labels[k].first - labels[k - 1].second, 8) << "label " << k;
    }
    EXPECT_NEAR((labels.back().first + labels.back().second) / 2.0, plot.right,
                (labels.back().second - labels.back().first) / 2.0 + 3.0);

    // The weight line runs from the first day's position to the last, in the line's colour.
    const auto isLine = [&](QRgb px) {
        return qAbs(qRed(px) - colours.line.red()) < 40 &&
               qAbs(qGreen(px) - colours.line.green()) < 40 &&
               qAbs(qBlue(px) - colours.line.blue()) < 40 && !sameColour(px, colours.face);
    };
    EXPECT_EQ(rowRuns(image, plot.left + 2, plot.left + 2, plot.top, plot.bottom, isLine), 1);
    EXPECT_EQ(rowRuns(image, plot.right - 3, plot.right - 3, plot.top, plot.bottom, isLine), 1);
    const int middle = (plot.left + plot.right) / 2;
    EXPECT_EQ(rowRuns(image, middle, middle, plot.top, plot.bottom, isLine), 1);
}

TEST_F(HistoricChartScreen, TheTrendCheckBoxDrawsTheSmoothedLineAndItsWeeklyRate) {
    weigh(1, 5, 2002, 200.0f);
    for (int d = 3; d <= 15; d += 2) {
        weigh(d, 5, 2002, 190.0f);
    }
    chartSettings.setSpan(1);
    const auto dialog = open();
    HistoricChartWidget& chart = *dialog->chart();
    const ChartColours colours = chartColours(chart.palette());
    auto* rate = child<QLabel>(*dialog, QStringLiteral("Weekly rate"));
    ASSERT_NE(rate, nullptr);
    EXPECT_EQ(countColour(paintedImage(chart), colours.trend), 0);  // off: the chart as designed
    EXPECT_FALSE(rate->isVisible());

    auto* trend = child<QCheckBox>(*dialog, QStringLiteral("Trend"));
    ASSERT_NE(trend, nullptr);
    QTest::mouseClick(trend, Qt::LeftButton, {}, QPoint(8, trend->height() / 2));  // on its box
    EXPECT_TRUE(chartSettings.trendShown());
    EXPECT_GT(countColour(paintedImage(chart), colours.trend), chart.width() / 4);
    EXPECT_TRUE(rate->isVisible());
    EXPECT_EQ(rate->text(), QStringLiteral("Trend (28 days): -2.6 lbs/week"));
    test::saveScreenshot(*dialog, QStringLiteral("historic-chart-trend"));
}

TEST_F(HistoricChartScreen, InADarkThemeTheChartIsDarkWithLightInk) {
    weigh(2, 5, 2002, 150.0f);
    weigh(16, 5, 2002, 182.0f);
    chartSettings.setSpan(1);
    const auto dialog = open();
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x2b, 0x2b, 0x2b));
    dark.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Button, QColor(0x35, 0x35, 0x35));
    dark.setColor(QPalette::ButtonText, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    dialog->setPalette(dark);
    QApplication::processEvents();
    test::saveScreenshot(*dialog, QStringLiteral("historic-chart-dark"));

    const QImage image = paintedImage(*dialog->chart());
    const FoundPlot plot = findPlot(image, QColor(0xee, 0xee, 0xee));
    ASSERT_GT(plot.right, plot.left);  // the frame is drawn in the light ink
    EXPECT_EQ(QColor(image.pixel(plot.left + 5, plot.top + 5)), QColor(0x35, 0x35, 0x35));
    EXPECT_EQ(fullRows(image, plot, QColor(0xee, 0xee, 0xee)), 2);  // top and bottom edges
    const ChartColours colours = chartColours(dark);
    EXPECT_GT(colours.grid.lightness(), 0x35);  // grid lines stand out from the dark face
    EXPECT_LT(colours.grid.lightness(), 0xee);
    EXPECT_GT(fullRows(image, plot, colours.grid), 5);
    EXPECT_GT(countColour(image, colours.line), 20);
}

TEST_F(HistoricChartScreen, TheSpanIsRememberedAndEveryControlWorksByKeyboard) {
    weigh(2, 5, 2002, 150.0f);
    weigh(16, 5, 2002, 152.0f);
    {
        const auto dialog = open();
        auto* title = dialog->findChild<QLabel*>();
        ASSERT_NE(title, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Historic Weight (7-Day)"));
        auto* close = child<QPushButton>(*dialog, QStringLiteral("Close"));
        ASSERT_NE(close, nullptr);
        EXPECT_TRUE(close->hasFocus());

        // Tab reaches the chosen span; the arrow keys choose another.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        auto* sevenDay = child<QRadioButton>(*dialog, QStringLiteral("7 Day"));
        ASSERT_NE(sevenDay, nullptr);
        EXPECT_TRUE(sevenDay->hasFocus());
        QTest::keyClick(sevenDay, Qt::Key_Right);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        EXPECT_TRUE(child<QRadioButton>(*dialog, QStringLiteral("1 Month"))->isChecked());
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Historic Weight (1-Month)"));

        // Tab goes on to Trend; Space turns it on; Escape leaves.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        auto* trend = child<QCheckBox>(*dialog, QStringLiteral("Trend"));
        ASSERT_NE(trend, nullptr);
        EXPECT_TRUE(trend->hasFocus());
        QTest::keyClick(trend, Qt::Key_Space);
        EXPECT_TRUE(chartSettings.trendShown());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(dialog->isVisible());
    }
    // Opened again, the chart keeps the span and the trend.
    const auto again = open();
    EXPECT_TRUE(child<QRadioButton>(*again, QStringLiteral("1 Month"))->isChecked());
    EXPECT_TRUE(child<QCheckBox>(*again, QStringLiteral("Trend"))->isChecked());
    EXPECT_EQ(again->windowTitle(), QStringLiteral("Historic Weight (1-Month)"));

    // Every control has a name a screen reader can say.
    for (QWidget* w : again->findChildren<QWidget*>()) {
        if (w->focusPolicy() != Qt::NoFocus && w->isVisible()) {
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->metaObject()->className();
        }
    }
    // Close by its button.
    QTest::mouseClick(child<QPushButton>(*again, QStringLiteral("Close")), Qt::LeftButton);
    EXPECT_EQ(again->result(), QDialog::Accepted);
}

}  // namespace
}  // namespace nutrovex
