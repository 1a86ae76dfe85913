#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QSvgRenderer>
#include <QTextBlock>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "forms/frame/HelpForm.h"
#include "ui/Resources.h"

namespace nutrovex {
namespace {

struct HelpCase {
    uint16_t id;
    std::string_view beginning;
};

const std::vector<HelpCase> kHelpTexts = {
    {kQuickHelpText,
     "At the top left of each screen you will see an OK button.  This button takes you back one "
     "screen.  From the main screen you can navigate anywhere in the program."},
    {kHealthyDietingText, "\"Diet\" includes everything that is consumed."},
    {kBmrText,
     "Basal Metabolic Rate (BMR) is a mathematical equation to approximate a persons Caloric "
     "needs per day."},
    {kBmrFactorsText, "Stress.  Psychological and physiological stress can raise BMR."},
    {kDisclaimerText,
     "The information given on Nutrovex is designed to help you make informed decisions about "
     "your health."},
    {kSafeLossText,
     "Safe weight loss is considered to be no more than 1-2 pounds per week.  It is usually not "
     "considered safe to eat less than 1200 calories per day unless advised to do so by your "
     "physician."},
};

// Line breaks are CR LF and only ever come in pairs: paragraphs are separated by one blank line.
void expectParagraphs(const std::string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            ASSERT_TRUE(i > 0 && text[i - 1] == '\r') << "bare LF at " << i;
        }
        if (text[i] == '\r') {
            ASSERT_TRUE(i + 1 < text.size() && text[i + 1] == '\n') << "bare CR at " << i;
        }
    }
    size_t from = 0;
    while ((from = text.find("\r\n", from)) != std::string::npos) {
        const bool pairedAfter = text.compare(from + 2, 2, "\r\n") == 0;
        ASSERT_TRUE(pairedAfter) << "a single line break at " << from;
        ASSERT_NE(text.compare(from + 4, 2, "\r\n"), 0) << "two blank lines at " << from;
        ASSERT_NE(text[from - 1], ' ') << "trailing blank at " << from;
        from += 4;
    }
}

TEST(HelpTexts, EachBeginsAsDesignedInParagraphsOfPlainText) {
    for (const HelpCase& c : kHelpTexts) {
        SCOPED_TRACE(c.id);
        const std::string text = loadHelpText(c.id);
        ASSERT_TRUE(text.starts_with(c.beginning)) << text.substr(0, c.beginning.size());
        // Sound content, not a stub: each text says more than its quoted beginning.
        EXPECT_GT(text.size(), c.beginning.size() + 300);
        expectParagraphs(text);
        for (const char ch : text) {
            ASSERT_TRUE(ch == '\r' || ch == '\n' || (ch >= ' ' && ch <= '~')) << int(ch);
        }
    }
    EXPECT_EQ(loadHelpText(1), "");
}

TEST(HelpTexts, TheBmrTextJoinsItsTwoStringsIntoOneList) {
    HelpForm form(helpTextSource());
    EXPECT_EQ(form.view().text, loadHelpText(kQuickHelpText));
    (void)form.command(HelpForm::Command::BmrButton);
    const std::string& text = form.view().text;
    // The first string ends with its own paragraph break, so the factors start a paragraph.
    const std::string first = loadHelpText(kBmrText);
    ASSERT_TRUE(first.ends_with(":\r\n\r\n"));
    EXPECT_EQ(text.substr(first.size(), 7), "Stress.");
    EXPECT_EQ(text, first + loadHelpText(kBmrFactorsText));
    expectParagraphs(text);
    for (const char* factor : {"\r\n\r\nAge.  ", "\r\n\r\nGender.  ", "\r\n\r\nThyroid.  ",
                               "\r\n\r\nFever and illness.  ", "\r\n\r\nBody composition.  "}) {
        EXPECT_NE(text.find(factor), std::string::npos) << factor;
    }
}

TEST(HelpTexts, ATextBoxShowsTheParagraphsWithBlankLinesBetween) {
    QPlainTextEdit box;
    box.setReadOnly(true);
    box.setPlainText(QString::fromLatin1(loadHelpText(kSafeLossText)));
    // Three paragraphs and two blank lines, no stray carriage returns.
    ASSERT_EQ(box.document()->blockCount(), 5);
    EXPECT_TRUE(box.document()->findBlockByNumber(1).text().isEmpty());
    EXPECT_TRUE(box.document()->findBlockByNumber(3).text().isEmpty());
    EXPECT_FALSE(box.toPlainText().contains(QLatin1Char('\r')));
    EXPECT_TRUE(box.document()->findBlockByNumber(0).text().endsWith(QStringLiteral("physician.")));
}

int opaquePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
    }
    return count;
}

TEST(Artwork, EveryPictureRendersAtItsSizeAndTwiceIt) {
    std::vector<QString> expected = {kBannerArt, kApplicationIconArt, kPreviousDayArt, kNextDayArt,
                                     kRuleArt,   kLegendLineArt};
    for (int step = 1; step <= 4; ++step) {
        expected.push_back(stepArt(step));
    }
    for (int group = 0; group <= 7; ++group) {
        expected.push_back(foodGroupArt(group));
    }
    EXPECT_EQ(stepArt(0), QString());
    EXPECT_EQ(stepArt(5), QString());
    EXPECT_EQ(foodGroupArt(8), QString());
    EXPECT_EQ(foodGroupArt(-1), QString());

    // Every picture compiled in is one the program names, and the other way round.
    std::set<QString> compiled;
    for (const QString& name : QDir(QStringLiteral(":/art")).entryList()) {
        compiled.insert(QStringLiteral(":/art/") + name);
    }
    EXPECT_EQ(compiled, std::set<QString>(expected.begin(), expected.end()));

    // Renders are kept for a person to look at when $NUTROVEX_SCREENSHOT_DIR is set.
    QString pictureDir = qEnvironmentVariable("NUTROVEX_SCREENSHOT_DIR");
    if (!pictureDir.isEmpty()) {
        pictureDir = QDir(pictureDir).filePath(QStringLiteral("art"));
        QDir().mkpath(pictureDir);
    }
    for (const QString& path : expected) {
        SCOPED_TRACE(path.toStdString());
        for (const int scale : {1, 2}) {
            QSvgRenderer renderer(path);
            const QSize size = renderer.defaultSize() * scale;
            const QImage image = renderArt(path, size);
            ASSERT_EQ(image.size(), size);
            // Drawn, and not a block of paint filling the whole area (the rule is a thin band).
            const int area = size.width() * size.height();
            EXPECT_GT(opaquePixels(image), area / 20);
            if (path != kRuleArt && path != kBannerArt) {
                EXPECT_LT(opaquePixels(image), area);
            }
            if (!pictureDir.isEmpty()) {
                const QString name =
                    QFileInfo(path).baseName() + QStringLiteral("@%1x.png").arg(scale);
                image.save(QDir(pictureDir).filePath(name));
            }
        }
    }
    EXPECT_TRUE(renderArt(QStringLiteral(":/art/none.svg"), {8, 8}).isNull());
}

TEST(Artwork, TheBannerIsWideAndTheFoodGroupsAreEightDifferentPictures) {
    const QSize banner = QSvgRenderer(kBannerArt).defaultSize();
    EXPECT_EQ(banner.width(), 480);
    EXPECT_GT(banner.width(), banner.height() * 3);

    std::vector<QImage> pictures;
    for (int group = 0; group <= 7; ++group) {
        pictures.push_back(renderArt(foodGroupArt(group), {64, 64}));
        for (int other = 0; other < group; ++other) {
            EXPECT_NE(pictures[group], pictures[other]) << group << " looks like " << other;
        }
    }
}

TEST(Artwork, TheApplicationIconScalesToEverySize) {
    const QIcon icon = applicationIcon();
    ASSERT_FALSE(icon.isNull());
    for (const int side : {16, 32, 48, 256}) {
        const QImage image = icon.pixmap(side, side).toImage();
        EXPECT_EQ(image.size(), QSize(side, side));
        EXPECT_GT(opaquePixels(image), side * side / 2);
    }
}

}  // namespace
}  // namespace nutrovex
