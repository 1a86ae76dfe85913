#include "tool/FoodCommands.h"

#include <iostream>
#include <iterator>
#include <optional>
#include <span>
#include <string>

#include "core/Cp1252.h"
#include "core/FoodCatalogue.h"
#include "foods/FoodCsv.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserList.h"
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

// Reads the catalogue at path without side effects; false (with the reason on err) on failure.
bool readCatalogueAt(FoodCatalogue& catalogue, const std::filesystem::path& path,
                     std::ostream& err) {
    catalogue.filePath = path;
    catalogue.folderPath = path.parent_path();
    const CatalogueLoadResult loaded = loadCatalogue(catalogue, {});
    if (loaded.outcome != CatalogueLoad::Read) {
        err << path.string() << ": " << loaded.status.message() << "\n";
        return false;
    }
    return true;
}

bool fileExists(const std::filesystem::path& path) {
    std::error_code ec;
    return std::filesystem::exists(path, ec);
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
    const std::filesystem::path& path = files->catalogue;
    removeStaleSaves(files->folder);

    std::string csv;
    if (*parsed->csvPath == "-") {
        csv.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    } else {
        ByteBuffer bytes;
        StorageError error;
        const ReadFile read = readWholeFile(*parsed->csvPath, bytes, error);
        if (read != ReadFile::Read) {
            err << *parsed->csvPath << ": "
                << (read == ReadFile::Missing ? "there is no such file" : error.message()) << "\n";
            return kExitDataError;
        }
        csv.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }

    // A user without a catalogue yet gets the template's foods first, as the program would.
    FoodCatalogue catalogue;
    const std::filesystem::path templatePath = templateCataloguePath(files->root);
    if (fileExists(path)) {
        if (!readCatalogueAt(catalogue, path, err)) {
            return kExitDataError;
        }
    } else if (fileExists(templatePath) && !readCatalogueAt(catalogue, templatePath, err)) {
        return kExitDataError;
    }
    catalogue.filePath = path;
    catalogue.folderPath = path.parent_path();

    const ImportReport report = importFoodsCsv(catalogue, csv);
    const std::string source = *parsed->csvPath == "-" ? "stdin" : *parsed->csvPath;
    if (!report.fileRefusal.empty()) {
        err << source << ":" << report.fileLine << ": " << report.fileRefusal << "\n";
        return kExitDataError;
    }
    for (const ImportRefusal& n : report.notes) {
        err << source << ":" << n.line << ": note: " << n.reason << "\n";
    }
    for (const ImportRefusal& r : report.refused) {
        err << source << ":" << r.line << ": " << r.reason << "\n";
    }
    if (report.notices().catalogue) {
        if (const StorageStatus saved = saveCatalogue(catalogue); !saved) {
            err << saved.message() << "\n";
            return kExitDataError;
        }
    }
    const auto counted = [](std::size_t n, const char* one, const char* many) {
        return std::to_string(n) + " " + (n == 1 ? one : many);
    };
    out << "added " << counted(report.foodsAdded, "food item", "food items") << " and "
        << counted(report.categoriesAdded, "category", "categories") << "; refused "
        << counted(report.refused.size(), "row", "rows") << "\n";
    return report.refused.empty() ? kExitOk : kExitDataError;
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
    const std::filesystem::path& path = files->catalogue;
    if (!fileExists(path)) {
        err << path.string()
            << ": the user has no food catalogue yet (it is made when the user is first opened)\n";
        return kExitDataError;
    }
    FoodCatalogue catalogue;
    if (!readCatalogueAt(catalogue, path, err)) {
        return kExitDataError;
    }
    const std::string csv = foodsCsv(catalogue);
    if (!parsed->csvPath) {
        out << csv;
        out.flush();
        return out ? kExitOk : kExitDataError;
    }
    const auto* data = reinterpret_cast<const uint8_t*>(csv.data());
    if (const StorageStatus written =
            writeOutputFile(*parsed->csvPath, std::span<const uint8_t>(data, csv.size()));
        !written) {
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
