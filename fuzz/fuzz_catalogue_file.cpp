// Feeds arbitrary bytes to the FoodDB.ddb reader. Whatever the bytes, reading must end in a
// clean result; a file the strict reader accepts must write back byte for byte.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "storage/CatalogueFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::span<const uint8_t> bytes(data, size);
    FoodCatalogue lenient;
    const StorageStatus loose = readCatalogueFile(bytes, lenient, {"FoodDB.ddb"});
    if (!loose && loose.message().empty()) {
        std::abort();
    }
    FoodCatalogue strict;
    if (!readCatalogueFile(bytes, strict, {"FoodDB.ddb", true})) {
        return 0;
    }
    ByteBuffer out;
    if (!writeCatalogueFile(strict, out, VersionOnWrite::AsStored) || out.size() != size ||
        std::memcmp(out.data(), data, size) != 0) {
        std::abort();
    }
    return 0;
}
