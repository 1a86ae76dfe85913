#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "render/ChartPainter.h"
#include "ui/Screenshot.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/ChartScreenFixture.h"
#include "ui/charts/ChartWidgets.h"

namespace nutrovex {
namespace {

using test::paintedImage;
using test::sameColour;

class BodyMassChartScreen : public test::ChartScreenFixture {
protected:
    // Today's weigh-in, a goal and a height: everything the chart needs.
    void prepare(float pounds) {
        session.store().profile.setHeight(70.0f);
        session.store().profile.setGoalWeight(170.0f);
        weigh(21, 11, 2002, pounds);
    }

    [[nodiscard]] static QStringList labelTexts(QWidget& dialog) {
        QStringList texts;
        for (QLabel* label : dialog.findChildren<QLabel*>()) {
            texts << label->text();
        }
        return texts;
    }

    // The row of the current weight's solid line: the row inside the plot most covered by ink.
    [[nodiscard]] static int currentLineRow(BodyMassChartWidget& chart) {
        const QImage image = paintedImage(chart);
        const ChartColours colours = chartColours(chart.palette());
        int best = -1;
        int bestInk = 0;
        for (int y = 2; y < image.height() - 2; ++y) {
            int ink = 0;
            for (int x = image.width() / 3; x < image.width() - 20; ++x) {
                ink += sameColour(image.pixel(x, y), colours.ink) ? 1 : 0;
            }
            // The frame's top and bottom edges are ink too; the line is drawn two pixels thick.
            const bool thick = ink > 0 && [&] {
                int below = 0;
                for (int x = image.width() / 3; x < image.width() - 20; ++x) {
                    below += sameColour(image.pixel(x, y + 1), colours.ink) ? 1 : 0;
                }
                return below == ink;
            }();
            if (thick && ink > image.width() / 3 && ink > bestInk) {
                best = y;
                bestInk = ink;
            }
        }
        return best;
    }
};

TEST_F(BodyMassChartScreen, MissingHeightShowsTheMessageAndOpensNothing) {
    session.store().profile.setGoalWeight(170.0f);
    weigh(21, 11, 2002, 180.0f);
    QString shown;
    QTimer::singleShot(0, [&shown] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = box->windowTitle() + QStringLiteral(": ") + box->text();
        box->button(QMessageBox::Ok)->click();
    });
    EXPECT_FALSE(
        BodyMassChartDialog::openChecked(BodyMassChartForm(session.days()), notifier, nullptr));
    EXPECT_EQ(shown, QStringLiteral("Weight Chart: Could not plot one or more data points due to "
                                    "missing height or weight information."));
}

TEST_F(BodyMassChartScreen, OpensFromTheCommandAndClosesWithOk) {
    prepare(220.0f);
    bool sawChart = false;
    QTimer::singleShot(0, [&sawChart] {
        auto* dialog = qobject_cast<BodyMassChartDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        sawChart = dialog->chart()->chart().has_value();
        // Keyboard alone: Enter presses OK, the default button.
        QTest::keyClick(dialog, Qt::Key_Return);
        if (dialog->isVisible()) {
            ADD_FAILURE() << "Enter did not close the chart";
            dialog->reject();
        }
    });
    EXPECT_TRUE(
        BodyMassChartDialog::openChecked(BodyMassChartForm(session.days()), notifier, nullptr));
    EXPECT_TRUE(sawChart);
}

TEST_F(BodyMassChartScreen, TheLegendAndTheCurrentWeightFollowTheData) {
    prepare(220.0f);
    BodyMassChartDialog dialog(BodyMassChartForm(session.days()), notifier, nullptr);
    dialog.show();
    QApplication::processEvents();
    test::saveScreenshot(dialog, QStringLiteral("body-mass-chart"));

    const QStringList texts = labelTexts(dialog);
    for (const char* text : {"= Under", "= Normal", "= Over", "= Obese", "Current", "Goal",
                             "220 lbs (Obese)", "170 lbs (Normal)"}) {
        EXPECT_TRUE(texts.contains(QString::fromLatin1(text))) << text;
    }
    for (const char* swatch : {"Un", "No", "Ov", "Ob"}) {
        bool found = false;
        for (QWidget* w : dialog.findChildren<QWidget*>()) {
            found = found || w->accessibleName() == QString::fromLatin1(swatch);
        }
        EXPECT_TRUE(found) << swatch;
    }

    BodyMassChartWidget& chart = *dialog.chart();
    const int heavy = currentLineRow(chart);
    ASSERT_GT(heavy, 0);

    // A lighter weigh-in today: the current line moves down the chart, the legend follows.
    weigh(21, 11, 2002, 150.0f);
    EXPECT_TRUE(labelTexts(dialog).contains(QStringLiteral("150 lbs (Normal)")));
    const int light = currentLineRow(chart);
    EXPECT_GT(light, heavy + 20);

    // The weigh-in removed: the chart says why it cannot plot, and the screen stays usable.
    weigh(21, 11, 2002, -1.0f);
    EXPECT_FALSE(chart.chart().has_value());
    EXPECT_EQ(currentLineRow(chart), -1);

    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace nutrovex
