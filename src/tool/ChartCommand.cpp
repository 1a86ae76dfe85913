#include "tool/ChartCommand.h"

#include <charconv>
#include <iostream>
#include <optional>
#include <string>

#include "core/Cp1252.h"
#include "core/UserStore.h"
#include "forms/charts/HistoricChartForm.h"
#include "logbook/DayCursor.h"
#include "render/ChartPng.h"
#include "session/SessionSettings.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserStorage.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

constexpr const char* kUsage =
    "usage: nutrovex-tool [--root DIR] chart --user NAME --span N --png FILE [--trend] "
    "[--width PIXELS]\n"
    "       N: 0 7 Day, 1 14 Day, 2 1 Month, 3 3 Month, 4 6 Month, 5 1 Year, 6 5 Year\n";

constexpr int kSmallestWidth = 120;
constexpr int kLargestWidth = 4000;

int usage(std::ostream& err, const std::string& problem) {
    err << "nutrovex-tool chart: " << problem << "\n" << kUsage;
    return kExitUsage;
}

std::optional<int> wholeNumber(const std::string& text, int lowest, int highest) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || value < lowest ||
        value > highest) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

int drawChart(const GlobalOptions& options, Args args, std::ostream& err) {
    std::optional<std::string> user;
    std::optional<int> span;
    std::optional<std::string> pngPath;
    bool trend = false;
    int width = 480;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& option = args[i];
        if (option == "--trend") {
            trend = true;
            continue;
        }
        if (i + 1 >= args.size()) {
            return usage(err, "'" + option + "' needs a value");
        }
        const std::string& value = args[++i];
        if (option == "--user") {
            user = utf8ToCp1252(value);
            if (!user) {
                return usage(err, "the user name cannot be written in Windows-1252");
            }
        } else if (option == "--span") {
            span = wholeNumber(value, 0, kHistorySpanCount - 1);
            if (!span) {
                return usage(err, "'" + value + "' is not a span from 0 to 6");
            }
        } else if (option == "--png") {
            pngPath = value;
        } else if (option == "--width") {
            const std::optional<int> w = wholeNumber(value, kSmallestWidth, kLargestWidth);
            if (!w) {
                return usage(err, "'" + value + "' is not a width from 120 to 4000 pixels");
            }
            width = *w;
        } else {
            return usage(err, "unknown option '" + option + "'");
        }
    }
    if (!user || !span || !pngPath) {
        return usage(err, "--user NAME, --span N and --png FILE are required");
    }

    const std::filesystem::path root = chooseDataRoot(options.root).path;
    const std::optional<std::filesystem::path> folder = listedUserFolder(root, *user, err);
    if (!folder) {
        return kExitDataError;
    }
    const SystemClock clock;
    UserStore store(clock);
    store.userFolderPath = *folder;
    store.dataFilePath = store.userFolderPath / kUserFileName;
    if (const StorageStatus s = loadUser(store); !s) {
        err << s.message() << "\n";
        return kExitDataError;
    }

    DayCursor days(store);
    MemoryChartSettings settings;
    settings.setSpan(static_cast<uint16_t>(*span));
    settings.setTrendShown(trend);
    const HistoricChartView chart = HistoricChartForm(days, settings).view();
    const std::vector<uint8_t> png =
        historicChartPng(chart.history, trend ? &chart.trend : nullptr, width);
    if (png.empty()) {
        err << "nutrovex-tool chart: the picture could not be made\n";
        return kExitDataError;
    }
    if (const StorageStatus written = writeOutputFile(*pngPath, png); !written) {
        err << written.message() << "\n";
        return kExitDataError;
    }
    return kExitOk;
}

int runChart(const GlobalOptions& options, Args args) {
    return drawChart(options, args, std::cerr);
}

}  // namespace nutrovex::tool
