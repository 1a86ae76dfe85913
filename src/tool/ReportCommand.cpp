#include "tool/ReportCommand.h"

#include <iostream>
#include <optional>
#include <span>
#include <string>

#include "charts/RangeReport.h"
#include "core/Cp1252.h"
#include "core/UserStore.h"
#include "render/ReportFiles.h"
#include "storage/FileIo.h"
#include "storage/TargetsFile.h"
#include "storage/UserStorage.h"
#include "tool/LogCommands.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

constexpr const char* kUsage =
    "usage: nutrovex-tool [--root DIR] report --user NAME --from M/D/YYYY --to M/D/YYYY "
    "(--pdf FILE | --html FILE)\n";

int usage(std::ostream& err, const std::string& problem) {
    err << "nutrovex-tool report: " << problem << "\n" << kUsage;
    return kExitUsage;
}

int refused(std::ostream& err, const std::string& problem) {
    err << "nutrovex-tool report: " << problem << "\n";
    return kExitDataError;
}

}  // namespace

int writeReport(const GlobalOptions& options, Args args, std::ostream& err) {
    std::optional<std::string> user;
    std::optional<std::string> fromText;
    std::optional<std::string> toText;
    std::optional<std::string> pdfPath;
    std::optional<std::string> htmlPath;
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
        } else if (option == "--from") {
            fromText = value;
        } else if (option == "--to") {
            toText = value;
        } else if (option == "--pdf") {
            pdfPath = value;
        } else if (option == "--html") {
            htmlPath = value;
        } else {
            return usage(err, "unknown option '" + option + "'");
        }
    }
    if (!user || !fromText || !toText) {
        return usage(err, "--user NAME, --from M/D/YYYY and --to M/D/YYYY are required");
    }
    if (pdfPath.has_value() == htmlPath.has_value()) {
        return usage(err, "give one of --pdf FILE and --html FILE");
    }
    const std::optional<CalendarDate> from = parseLogDate(*fromText);
    const std::optional<CalendarDate> to = parseLogDate(*toText);
    if (!from || !to) {
        return refused(err,
                       "'" + (from ? *toText : *fromText) + "' is not a date written M/D/YYYY");
    }

    const std::optional<UserFiles> files =
        openUserFiles(options, *user, Access::Read, "report", err);
    if (!files) {
        return kExitDataError;
    }
    const SystemClock clock;
    UserStore store(clock);
    store.userFolderPath = files->folder;
    store.dataFilePath = files->userFile;
    if (const StorageStatus s = loadUser(store); !s) {
        err << s.message() << "\n";
        return kExitDataError;
    }
    // A report without the targets the person set would say they set none.
    MacroTargets targets;
    if (const SideFileResult t = loadTargets(files->folder, targets); !t.usable()) {
        err << t.status.message() << "\n";
        return kExitDataError;
    }
    if (const std::optional<std::string> problem = reportRangeProblem(store, *from, *to)) {
        return refused(err, *problem);
    }

    const RangeReport report = makeRangeReport(store, targets, *from, *to);
    StorageStatus written;
    if (pdfPath) {
        const std::vector<uint8_t> pdf = reportPdf(report, localePaper());
        if (pdf.empty()) {
            return refused(err, "the PDF could not be made");
        }
        written = writeOutputFile(*pdfPath, pdf);
    } else {
        const std::string page = reportHtml(report);
        const auto* data = reinterpret_cast<const uint8_t*>(page.data());
        written = writeOutputFile(*htmlPath, std::span<const uint8_t>(data, page.size()));
    }
    if (!written) {
        err << written.message() << "\n";
        return kExitDataError;
    }
    return kExitOk;
}

int runReport(const GlobalOptions& options, Args args) {
    return writeReport(options, args, std::cerr);
}

}  // namespace nutrovex::tool
