#pragma once

#include <filesystem>

#include "core/FoodCatalogue.h"
#include "storage/CatalogueStorage.h"
#include "storage/StorageError.h"
#include "storage/UserList.h"

namespace nutrovex {

// What a user without a catalogue file gets.
enum class MissingCatalogue : uint8_t {
    CopyTemplate,  // the template's foods, copied into the user's folder at once
    UseTemplate,   // the template's foods (none without a template), written by the next save
    Refuse,        // nothing: the load says the user has no catalogue
};

struct UserCatalogueLoad {
    CatalogueLoad outcome = CatalogueLoad::Failed;
    StorageStatus status;          // why, when Failed
    std::filesystem::path failed;  // the file that could not be read, when one could not
    bool missing = false;          // the user had no catalogue file
    bool readWhole = false;        // saving may write the user's catalogue file
};

// Finds and loads a user's catalogue as the program does when it opens the user: its path comes
// from the user's data file through the list (storage's setCataloguePath), then the file is read.
[[nodiscard]] UserCatalogueLoad loadUserCatalogue(FoodCatalogue& catalogue, const UserList& users,
                                                  const std::filesystem::path& userDataFile,
                                                  const std::filesystem::path& templatePath,
                                                  MissingCatalogue missing);

}  // namespace nutrovex
