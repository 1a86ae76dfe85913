#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>

#include "ui/frame/Tour.h"

namespace nutrovex {
namespace {

// Where anything differs from the picture's corner: the text of a label.
QRect inkBox(const QImage& picture) {
    QRect box;
    const QColor background = picture.pixelColor(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) != background) {
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    return box;
}

TEST(Tour, SavesEveryStopAtScaleOneAtTwiceThePixelDensityAndInTheDark) {
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
        const QImage dark(QDir(dir.path())
                              .filePath(QStringLiteral("dark/") + QString::fromLatin1(name) +
                                        QStringLiteral(".png")));
        EXPECT_EQ(normal.size(), QSize(kDefaultWindowWidth, kDefaultWindowHeight)) << name;
        EXPECT_EQ(doubled.size(), QSize(2 * kDefaultWindowWidth, 2 * kDefaultWindowHeight)) << name;
        EXPECT_EQ(dark.size(), normal.size()) << name;
        // The doubled picture is the same screen drawn finer, not a larger window: its text
        // is twice as tall, where a larger window would show it at the same size.
        const QRect text = inkBox(normal);
        const QRect finer = inkBox(doubled);
        ASSERT_FALSE(text.isEmpty()) << name;
        EXPECT_NEAR(finer.height(), 2 * text.height(), 3) << name;
        EXPECT_NEAR(finer.top(), 2 * text.top(), 3) << name;
        EXPECT_LT(dark.pixelColor(0, 0).lightness(), 100) << name;
        EXPECT_GT(normal.pixelColor(0, 0).lightness(), 150) << name;
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
    EXPECT_TRUE(QFile::exists(QDir(dir.path()).filePath(QStringLiteral("dark/present.png"))));
}

}  // namespace
}  // namespace nutrovex
