#include "session/FoodCsvFiles.h"

#include <cstdint>
#include <span>
#include <string>

#include "storage/FileIo.h"

namespace nutrovex {

FoodCsvText readFoodCsvFile(const std::filesystem::path& path) {
    FoodCsvText csv;
    csv.name = path.string();
    ByteBuffer bytes;
    StorageError error;
    switch (readWholeFile(path, bytes, error)) {
        case ReadFile::Read:
            csv.text.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
            break;
        case ReadFile::Missing:
            csv.failure = "there is no such file";
            break;
        case ReadFile::Failed:
            csv.failure = error.message();
            break;
    }
    return csv;
}

StorageStatus exportFoodCsvFile(const FoodCatalogue& catalogue, const std::filesystem::path& path) {
    const std::string csv = foodsCsv(catalogue);
    const auto* data = reinterpret_cast<const uint8_t*>(csv.data());
    return writeOutputFile(path, std::span<const uint8_t>(data, csv.size()));
}

}  // namespace nutrovex
