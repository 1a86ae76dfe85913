#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "ui/charts/ChartScreenFixture.h"
#include "ui/charts/ChartsTour.h"

namespace nutrovex {
namespace {

class ChartsTour : public test::ChartScreenFixture {};

TEST_F(ChartsTour, EveryChartOpensOnTheSessionsDataAtBothSizes) {
    session.store().profile.setHeight(68.0f);
    session.store().profile.setGoalWeight(165.0f);
    session.store().profile.setStartWeight(190.0f);
    for (int day = 0; day < 60; ++day) {
        const CalendarDate date = steppedDate(CalendarDate::fromDmy(21, 11, 2002), -day);
        weigh(date.day, date.month, date.year,
              180.0f - static_cast<float>(day % 7) * 0.4f - static_cast<float>(60 - day) * 0.15f);
    }
    QTemporaryDir pictures;
    ASSERT_TRUE(pictures.isValid());
    const std::vector<TourStop> stops = chartsTourStops(session, notifier);
    const QStringList failures = runTour(pictures.path(), stops, nullptr);
    EXPECT_TRUE(failures.isEmpty()) << failures.join(QStringLiteral("; ")).toStdString();

    QStringList names;
    for (const TourStop& stop : stops) {
        names << stop.name;
        const QImage picture(QDir(pictures.path()).filePath(stop.name + QStringLiteral("@2x.png")));
        EXPECT_EQ(picture.size(), QSize(2 * kDefaultWindowWidth, 2 * kDefaultWindowHeight))
            << stop.name.toStdString();
    }
    for (const char* name : {"historic-chart", "historic-chart-7-day", "historic-chart-5-year",
                             "historic-chart-trend", "body-mass-chart"}) {
        EXPECT_TRUE(names.contains(QString::fromLatin1(name))) << name;
    }
    if (const QString keep = qEnvironmentVariable("NUTROVEX_SCREENSHOT_DIR"); !keep.isEmpty()) {
        (void)runTour(keep, stops, nullptr);
    }
}

}  // namespace
}  // namespace nutrovex
