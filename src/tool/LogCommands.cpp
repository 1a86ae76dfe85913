#include "tool/LogCommands.h"

#include <charconv>
#include <iostream>
#include <span>

#include "calc/Totals.h"
#include "charts/MeasuredMaintenance.h"
#include "charts/WeightTrend.h"
#include "core/Cp1252.h"
#include "core/Csv.h"
#include "core/DayRecord.h"
#include "core/UserStore.h"
#include "session/Session.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"
#include "storage/UserStorage.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

constexpr const char* kUsage =
    "usage: nutrovex-tool [--root DIR] export-log --user NAME [--from M/D/YYYY] [--to M/D/YYYY] "
    "[--csv FILE]\n";

std::optional<int> wholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || text[0] == '-' ||
        text[0] == '+') {
        return std::nullopt;
    }
    return value;
}

// Clear words on err, exit 2.
int usage(std::ostream& err, const std::string& problem) {
    err << "nutrovex-tool export-log: " << problem << "\n" << kUsage;
    return kExitUsage;
}

}  // namespace

std::optional<CalendarDate> parseLogDate(std::string_view text) {
    const std::size_t first = text.find('/');
    const std::size_t second = first == std::string_view::npos ? first : text.find('/', first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    const auto month = wholeNumber(text.substr(0, first));
    const auto day = wholeNumber(text.substr(first + 1, second - first - 1));
    const auto year = wholeNumber(text.substr(second + 1));
    if (!month || !day || !year || *month < 1 || *month > 12 || *year < 1904 || *year > 2031 ||
        *day < 1 || *day > daysInMonth(*month, *year)) {
        return std::nullopt;
    }
    return CalendarDate::fromDmy(*day, *month, *year);
}

std::string logCsvHeader() {
    return "date,weight,level,bmr,calories,carbohydrate,fiber,protein,fat,saturated fat,"
           "exercise calories,exercise minutes,water,note\n";
}

std::string logCsvRow(DayRecord& day) {
    const Nutrients totals = dayTotals(day);
    const ExerciseTotals exercise = exerciseTotals(day);
    const CalendarDate& d = day.date();
    std::string row =
        std::to_string(d.month) + "/" + std::to_string(d.day) + "/" + std::to_string(d.year) + ",";
    row += day.weight() < 0.0f ? std::string() : shortestText(day.weight());
    row += "," + std::to_string(day.level()) + "," + std::to_string(day.bmr());
    for (const float total : totals) {
        row += "," + shortestText(total);
    }
    row += "," + std::to_string(exercise.calories) + "," + std::to_string(exercise.minutes);
    row += "," + std::to_string(day.water()) + ",";
    row += csvField(cp1252ToUtf8(day.note()));
    row += "\n";
    return row;
}

std::string maintenanceSummary(const UserStore& store, const CalendarDate& current) {
    const Maintenance m = measureMaintenance(store.days(), current);
    if (!m.valid) {
        return {};
    }
    std::string line = "measured maintenance: " + groupedCalories(roundedMaintenance(m.calories)) +
                       " a day over the " + std::to_string(kMaintenanceWindowDays) + " days to " +
                       std::to_string(current.month) + "/" + std::to_string(current.day) + "/" +
                       std::to_string(current.year) + " (" + std::to_string(m.loggedDays) +
                       " days logged, " + std::to_string(m.weighIns) + " weigh-ins";
    if (const auto rate = m.weeklyRate()) {
        line += ", trend " + weeklyRateText(*rate, store.profile.metric());
    }
    return line + ")\n";
}

int exportLog(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err) {
    const SystemClock clock;
    return exportLog(options, args, out, err, clock);
}

int exportLog(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err,
              const Clock& clock) {
    std::optional<std::string> user;
    std::optional<CalendarDate> from;
    std::optional<CalendarDate> to;
    std::optional<std::string> csvPath;
    for (std::size_t i = 0; i < args.size(); i += 2) {
        const std::string& option = args[i];
        if (i + 1 >= args.size()) {
            return usage(err, "'" + option + "' needs a value");
        }
        const std::string& value = args[i + 1];
        if (option == "--user") {
            user = utf8ToCp1252(value);
            if (!user) {
                return usage(err, "the user name cannot be written in Windows-1252");
            }
        } else if (option == "--from" || option == "--to") {
            const std::optional<CalendarDate> date = parseLogDate(value);
            if (!date) {
                return usage(err, "'" + value + "' is not a date written M/D/YYYY");
            }
            (option == "--from" ? from : to) = date;
        } else if (option == "--csv") {
            csvPath = value;
        } else {
            return usage(err, "unknown option '" + option + "'");
        }
    }
    if (!user) {
        return usage(err, "--user NAME is required");
    }

    // Exporting changes nothing on disk, not even a missing user list.
    const std::optional<UserFiles> files =
        openUserFiles(options, *user, Access::Read, "export-log", err);
    if (!files) {
        return kExitDataError;
    }

    UserStore store(clock);
    store.userFolderPath = files->folder;
    store.dataFilePath = files->userFile;
    if (const StorageStatus s = loadUser(store); !s) {
        err << s.message() << "\n";
        return kExitDataError;
    }

    std::string csv = logCsvHeader();
    for (const auto& day : store.days()) {
        if ((from && dateEarlier(day->date(), *from)) || (to && dateLater(day->date(), *to))) {
            continue;
        }
        csv += logCsvRow(*day);
    }
    // The summary never mixes into CSV on standard output.
    const std::string summary = maintenanceSummary(store, to ? *to : clock.now());
    if (!csvPath) {
        out << csv;
        out.flush();
        err << summary;
        return out ? kExitOk : kExitDataError;
    }
    const auto* data = reinterpret_cast<const uint8_t*>(csv.data());
    const StorageStatus written =
        writeOutputFile(*csvPath, std::span<const uint8_t>(data, csv.size()));
    if (!written) {
        err << written.message() << "\n";
        return kExitDataError;
    }
    out << summary;
    return kExitOk;
}

int runExportLog(const GlobalOptions& options, Args args) {
    return exportLog(options, args, std::cout, std::cerr);
}

}  // namespace nutrovex::tool
