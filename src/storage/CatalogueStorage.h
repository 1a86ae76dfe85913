#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "core/FoodCatalogue.h"
#include "storage/StorageError.h"
#include "storage/UserList.h"

namespace nutrovex {

// The food catalogue's file operations.

// Derives the catalogue's paths from the user's data file path: the folder below the users
// folder names the user, who is looked up in the list (the first user when not found); the
// catalogue is that user's folder + FoodDB.ddb.
[[nodiscard]] StorageStatus setCataloguePath(FoodCatalogue& catalogue, const UserList& users,
                                             const std::filesystem::path& userDataFile);

enum class CatalogueLoad {
    Read,    // the file was read
    Copied,  // there was none: the template was read and copied in
    Failed,
};

struct CatalogueLoadResult {
    CatalogueLoad outcome = CatalogueLoad::Failed;
    StorageStatus status;  // why, when not Read
};

// Resets the catalogue and reads its file. A missing file is replaced by a copy of the template
// catalogue, which is read at once (a template that cannot be read whole is not copied).
[[nodiscard]] CatalogueLoadResult loadCatalogue(FoodCatalogue& catalogue,
                                                const std::filesystem::path& templatePath);

// Replaces the catalogue file atomically (version written as 4). Fails, leaving the old file
// whole, when the header's group chunk numbers do not match the groups.
[[nodiscard]] StorageStatus saveCatalogue(FoodCatalogue& catalogue);

// Installs the catalogue that ships with the program as the data root's template, when the root
// has none. An existing template is left alone.
[[nodiscard]] StorageStatus installTemplateCatalogue(const std::filesystem::path& root,
                                                     std::span<const uint8_t> shipped);

// Where an installed program's starting catalogue lies: <prefix>/share/nutrovex/FoodDB.ddb for a
// program in <prefix>/bin.
[[nodiscard]] std::filesystem::path installedTemplatePath(const std::filesystem::path& programDir);

// The catalogue a program installs as a data root's template: the one installed beside it when
// that reads as a catalogue (a packager may replace it without a rebuild), else the one built in
// (a program run from the build tree, or an installed file that is missing or damaged).
[[nodiscard]] std::vector<uint8_t> chooseTemplateCatalogue(const std::filesystem::path& programDir,
                                                           std::span<const uint8_t> builtIn);

}  // namespace nutrovex
