#include "tool/FoodCommands.h"

#include <iostream>
#include <iterator>
#include <optional>
#include <string>

#include "core/Cp1252.h"
#include "core/FoodCatalogue.h"
#include "foods/FoodCsv.h"
#include "session/FoodCsvFiles.h"
#include "session/Session.h"
#include "session/UserCatalogue.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

struct FoodArgs {
    std::string user;  // Windows-1252
    std::optional<std::string> csvPath;
};

int usage(std::ostream& err, const char* command, const std::string& problem) {
    err << "nutrovex-tool " << command << ": " << problem << "\n"
        << "usage: nutrovex-tool [--root DIR] import-foods --user NAME CSV\n"
        << "       nutrovex-tool [--root DIR] export-foods --user NAME [--csv FILE]\n";
    return kExitUsage;
}

// --user NAME, and the CSV: a plain argument for import, --csv FILE for export.
std::optional<FoodArgs> parseArgs(Args args, bool import, std::ostream& err, int& status) {
    const char* command = import ? "import-foods" : "export-foods";
    FoodArgs parsed;
    bool haveUser = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--user" || (!import && arg == "--csv")) {
            if (i + 1 >= args.size()) {
                status = usage(err, command, "'" + arg + "' needs a value");
                return std::nullopt;
            }
            const std::string& value = args[++i];
            if (arg == "--csv") {
                parsed.csvPath = value;
                continue;
            }
            const std::optional<std::string> name = utf8ToCp1252(value);
            if (!name) {
                status = usage(err, command, "the user name cannot be written in Windows-1252");
                return std::nullopt;
            }
            parsed.user = *name;
            haveUser = true;
        } else if (import && !parsed.csvPath && (arg == "-" || !arg.starts_with("--"))) {
            parsed.csvPath = arg;
        } else {
            status = usage(err, command, "unexpected argument '" + arg + "'");
            return std::nullopt;
        }
    }
    if (!haveUser) {
        status = usage(err, command, "--user NAME is required");
        return std::nullopt;
    }
    if (import && !parsed.csvPath) {
        status = usage(err, command, "the CSV file is required");
        return std::nullopt;
    }
    return parsed;
}

// Loads the user's catalogue as the program finds it, without writing anything; false (with the
// reason on err) when it cannot be read, or is missing where missing refuses it.
bool loadCatalogueOf(const UserFiles& files, FoodCatalogue& catalogue, MissingCatalogue missing,
                     std::ostream& err) {
    const UserCatalogueLoad loaded = loadUserCatalogue(catalogue, files.users, files.userFile,
                                                       templateCataloguePath(files.root), missing);
    if (loaded.missing && missing == MissingCatalogue::Refuse) {
        err << catalogue.filePath.string()
            << ": the user has no food catalogue yet (it is made when the user is first opened)\n";
        return false;
    }
    if (loaded.outcome == CatalogueLoad::Failed) {
        err << (loaded.failed.empty() ? std::string() : loaded.failed.string() + ": ")
            << loaded.status.message() << "\n";
        return false;
    }
    return true;
}

}  // namespace

int importFoods(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err) {
    int status = kExitOk;
    const std::optional<FoodArgs> parsed = parseArgs(args, true, err, status);
    if (!parsed) {
        return status;
    }
    const std::optional<UserFiles> files =
        openUserFiles(options, parsed->user, Access::Write, "import-foods", err);
    if (!files) {
        return kExitDataError;
    }
    removeStaleSaves(files->folder);

    FoodCsvText csv;
    if (*parsed->csvPath == "-") {
        csv.name = "stdin";
        csv.text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    } else {
        csv = readFoodCsvFile(*parsed->csvPath);
        if (!csv.failure.empty()) {
            err << csv.name << ": " << csv.failure << "\n";
            return kExitDataError;
        }
    }

    // A user without a catalogue yet gets the template's foods first, as the program would.
    FoodCatalogue catalogue;
    if (!loadCatalogueOf(*files, catalogue, MissingCatalogue::UseTemplate, err)) {
        return kExitDataError;
    }
    const FoodCsvImportResult imported = importFoodCsv(catalogue, csv);
    for (const std::string& line : imported.lines) {
        err << line << "\n";
    }
    if (imported.refusedWhole()) {
        return kExitDataError;
    }
    if (imported.notices.catalogue) {
        if (const StorageStatus saved = saveCatalogue(catalogue); !saved) {
            err << saved.message() << "\n";
            return kExitDataError;
        }
    }
    out << imported.summary << "\n";
    return imported.allAdded() ? kExitOk : kExitDataError;
}

int exportFoods(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err) {
    int status = kExitOk;
    const std::optional<FoodArgs> parsed = parseArgs(args, false, err, status);
    if (!parsed) {
        return status;
    }
    const std::optional<UserFiles> files =
        openUserFiles(options, parsed->user, Access::Read, "export-foods", err);
    if (!files) {
        return kExitDataError;
    }
    FoodCatalogue catalogue;
    if (!loadCatalogueOf(*files, catalogue, MissingCatalogue::Refuse, err)) {
        return kExitDataError;
    }
    if (!parsed->csvPath) {
        out << foodsCsv(catalogue);
        out.flush();
        return out ? kExitOk : kExitDataError;
    }
    if (const StorageStatus written = exportFoodCsvFile(catalogue, *parsed->csvPath); !written) {
        err << written.message() << "\n";
        return kExitDataError;
    }
    return kExitOk;
}

int runImportFoods(const GlobalOptions& options, Args args) {
    return importFoods(options, args, std::cout, std::cerr);
}

int runExportFoods(const GlobalOptions& options, Args args) {
    return exportFoods(options, args, std::cout, std::cerr);
}

}  // namespace nutrovex::tool
