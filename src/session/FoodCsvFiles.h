#pragma once

#include <filesystem>

#include "core/FoodCatalogue.h"
#include "foods/FoodCsv.h"
#include "storage/StorageError.h"

namespace nutrovex {

// The food list's CSV files, as the catalogue screen and nutrovex-tool import and export them.

// Reads a food CSV whole for importFoodCsv; a file that cannot be read says why.
[[nodiscard]] FoodCsvText readFoodCsvFile(const std::filesystem::path& path);

// Writes the catalogue as a food CSV, replacing the file whole or, on failure, not at all.
[[nodiscard]] StorageStatus exportFoodCsvFile(const FoodCatalogue& catalogue,
                                              const std::filesystem::path& path);

}  // namespace nutrovex
