#include <gtest/gtest.h>

#include <QSettings>
#include <QString>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "core/Cp1252.h"
#include "tool/IniSettings.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

class IniSettingsQt : public ::testing::Test {
protected:
    IniSettingsQt() {
        std::random_device rd;
        folder = fs::temp_directory_path() / ("nutrovex-ini-" + std::to_string(rd()));
        fs::create_directories(folder);
        file = folder / "Nutrovex.ini";
    }
    ~IniSettingsQt() override {
        std::error_code ec;
        fs::remove_all(folder, ec);
    }

    // Read from a copy of its own: within one process Qt keeps a file's values cached and may not
    // notice a rewrite of the same size within its clock's resolution. The program, a process of
    // its own, always reads the file afresh.
    QString readByQt(const char* key) {
        const fs::path copy = folder / ("read-" + std::to_string(++reads) + ".ini");
        fs::copy_file(file, copy);
        QSettings qt(QString::fromStdString(copy.string()), QSettings::IniFormat);
        return qt.value(QString::fromLatin1(key)).toString();
    }

    fs::path folder;
    fs::path file;
    int reads = 0;
};

// Names (Windows-1252, as the engine keeps them) whose INI form needs care.
const char* const kNames[] = {
    "Demo",  "Ann Lee",      " lead",       "trail ",     "a,b", "semi;colon", "x=y",
    "#hash", "quote\"d",     "back\\slash", "@home",      "a@b", "Zo\xEB",     "caf\xE9 cr\xE8me",
    "100%",  "\x80uro sign", "[Bracket]",   "tab\tafter",
};

TEST_F(IniSettingsQt, QtReadsTheNameTheToolWroteAndKeepsTheRestOfTheFile) {
    std::ofstream(file) << "[General]\nspan=3\n\n[Charts]\nTrend=true\n";
    for (const char* name : kNames) {
        IniSessionSettings settings(file);
        settings.setCurrentUserName(name);
        ASSERT_EQ(settings.failure(), "");
        EXPECT_EQ(readByQt("CurrentUser/Name"), QString::fromStdString(cp1252ToUtf8(name))) << name;
        EXPECT_EQ(settings.currentUserName(), name);
    }
    EXPECT_EQ(readByQt("span"), QStringLiteral("3"));
    EXPECT_EQ(readByQt("Charts/Trend"), QStringLiteral("true"));
}

TEST_F(IniSettingsQt, TheToolReadsAndUpdatesWhatQtWrote) {
    for (const char* name : kNames) {
        {
            QSettings qt(QString::fromStdString(file.string()), QSettings::IniFormat);
            qt.setValue(QStringLiteral("Charts/Span"), 4);
            qt.setValue(QStringLiteral("CurrentUser/Name"),
                        QString::fromStdString(cp1252ToUtf8(name)));
            qt.setValue(QStringLiteral("CurrentUser/Other"), QStringLiteral("kept"));
        }
        IniSessionSettings settings(file);
        EXPECT_EQ(settings.currentUserName(), name);
        settings.setCurrentUserName("Demo");
        EXPECT_EQ(readByQt("CurrentUser/Name"), QStringLiteral("Demo")) << name;
        EXPECT_EQ(readByQt("CurrentUser/Other"), QStringLiteral("kept"));
        EXPECT_EQ(readByQt("Charts/Span"), QStringLiteral("4"));
    }
}

TEST_F(IniSettingsQt, AMissingFileIsMadeAndTheFolderTooWhenTheRootIsNew) {
    const fs::path nested = folder / "new root" / "Nutrovex.ini";
    IniSessionSettings settings(nested);
    EXPECT_EQ(settings.currentUserName(), "");
    settings.setCurrentUserName("Demo");
    ASSERT_EQ(settings.failure(), "");
    QSettings qt(QString::fromStdString(nested.string()), QSettings::IniFormat);
    EXPECT_EQ(qt.value(QStringLiteral("CurrentUser/Name")).toString(), QStringLiteral("Demo"));
}

TEST(IniSettingsPath, MatchesWhereQtKeepsTheProgramsSettings) {
    // Without a root of its own the program uses the per-user settings of "Zerbu"/"Nutrovex".
    const QSettings qt(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Zerbu"),
                       QStringLiteral("Nutrovex"));
    const DataRootChoice defaultRoot{"/somewhere", false};
    EXPECT_EQ(QString::fromStdString(settingsFilePath(defaultRoot).string()), qt.fileName());
    const DataRootChoice given{"/data/root", true};
    EXPECT_EQ(settingsFilePath(given), fs::path("/data/root/Nutrovex.ini"));
}

}  // namespace
}  // namespace nutrovex::tool
