#include "session/UserCatalogue.h"

#include <system_error>

namespace nutrovex {

namespace {

bool fileExists(const std::filesystem::path& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::exists(path, ec);
}

void forget(FoodCatalogue& catalogue) {
    catalogue.reset();
    catalogue.filePath.clear();
    catalogue.folderPath.clear();
}

}  // namespace

UserCatalogueLoad loadUserCatalogue(FoodCatalogue& catalogue, const UserList& users,
                                    const std::filesystem::path& userDataFile,
                                    const std::filesystem::path& templatePath,
                                    MissingCatalogue missing) {
    UserCatalogueLoad result;
    if (const StorageStatus path = setCataloguePath(catalogue, users, userDataFile); !path) {
        forget(catalogue);
        result.status = path;
        return result;
    }
    const std::filesystem::path file = catalogue.filePath;
    result.missing = !fileExists(file);
    if (result.missing && missing != MissingCatalogue::CopyTemplate) {
        catalogue.reset();
        catalogue.modified = false;
        if (missing == MissingCatalogue::Refuse) {
            result.failed = file;
            return result;
        }
        if (fileExists(templatePath)) {
            // The template read where it lies, then kept as the user's catalogue in memory only.
            catalogue.filePath = templatePath;
            const CatalogueLoadResult loaded = loadCatalogue(catalogue, {});
            catalogue.filePath = file;
            if (loaded.outcome != CatalogueLoad::Read) {
                result.status = loaded.status;
                result.failed = templatePath;
                return result;
            }
        }
        result.outcome = CatalogueLoad::Read;
        result.readWhole = true;
        return result;
    }
    const CatalogueLoadResult loaded = loadCatalogue(
        catalogue,
        missing == MissingCatalogue::CopyTemplate ? templatePath : std::filesystem::path());
    result.outcome = loaded.outcome;
    result.status = loaded.status;
    if (loaded.outcome == CatalogueLoad::Failed) {
        result.failed = result.missing ? templatePath : file;
        // A catalogue that is not on disk has nothing to keep from being written over.
        result.readWhole = !fileExists(file);
    } else {
        result.readWhole = true;
    }
    return result;
}

}  // namespace nutrovex
