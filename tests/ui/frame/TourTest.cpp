#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>

#include "ui/frame/Tour.h"

namespace nutrovex {
namespace {

TEST(Tour, SavesEveryStopAtTheDefaultSizeAndAtTwiceIt) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const std::vector<TourStop> stops{
        {QStringLiteral("first"),
         [](QWidget* parent) { return std::make_unique<QLabel>(QStringLiteral("One"), parent); }},
        {QStringLiteral("second"),
         [](QWidget* parent) { return std::make_unique<QLabel>(QStringLiteral("Two"), parent); }},
    };

    EXPECT_TRUE(runTour(dir.path(), stops, nullptr).isEmpty());

    for (const char* name : {"first", "second"}) {
        const QImage normal(
            QDir(dir.path()).filePath(QString::fromLatin1(name) + QStringLiteral(".png")));
        const QImage doubled(
            QDir(dir.path()).filePath(QString::fromLatin1(name) + QStringLiteral("@2x.png")));
        EXPECT_EQ(normal.size(), QSize(kDefaultWindowWidth, kDefaultWindowHeight)) << name;
        EXPECT_EQ(doubled.size(), QSize(2 * kDefaultWindowWidth, 2 * kDefaultWindowHeight)) << name;
    }
}

TEST(Tour, AScreenThatDoesNotOpenIsReportedAndTheOthersStillSaved) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const std::vector<TourStop> stops{
        {QStringLiteral("missing"), [](QWidget*) { return std::unique_ptr<QWidget>(); }},
        {QStringLiteral("present"),
         [](QWidget* parent) { return std::make_unique<QLabel>(QStringLiteral("Here"), parent); }},
    };

    const QStringList failures = runTour(dir.path(), stops, nullptr);

    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.front().startsWith(QStringLiteral("missing:")));
    EXPECT_TRUE(QFile::exists(QDir(dir.path()).filePath(QStringLiteral("present.png"))));
    EXPECT_FALSE(QFile::exists(QDir(dir.path()).filePath(QStringLiteral("missing.png"))));
}

}  // namespace
}  // namespace nutrovex
