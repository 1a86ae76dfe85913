#pragma once

#include <cstdint>
#include <span>

#include "core/FoodCatalogue.h"
#include "storage/Chunks.h"
#include "storage/FileIo.h"

namespace nutrovex {

inline constexpr const char* kCatalogueFileName = "FoodDB.ddb";
inline constexpr uint16_t kCatalogueVersion = 4;

// Reads a whole FoodDB.ddb into the catalogue, resetting it first: chunk 0 the header, then per
// group its category list followed by one food list per category. The header's chunk number of
// each group must be the chunk that holds its category list. On failure the catalogue keeps
// what was read before the failing chunk.
[[nodiscard]] StorageStatus readCatalogueFile(ChunkSource& source, FoodCatalogue& catalogue,
                                              const ReadOptions& options);
[[nodiscard]] inline StorageStatus readCatalogueFile(std::span<const uint8_t> bytes,
                                                     FoodCatalogue& catalogue,
                                                     const ReadOptions& options) {
    MemorySource source(bytes);
    return readCatalogueFile(source, catalogue, options);
}

enum class VersionOnWrite {
    Current,   // the program always writes version 4
    AsStored,  // the tool writes back what the header holds
};

// Serialises the catalogue. Fails before writing anything when the header's group chunk numbers
// do not match the groups; a list too large for a chunk fails part way (the sink's contents are
// then to be thrown away).
[[nodiscard]] StorageStatus writeCatalogueFile(const FoodCatalogue& catalogue, ChunkSink& sink,
                                               VersionOnWrite version = VersionOnWrite::Current);
// The same into memory; on failure `out` is left as it was.
[[nodiscard]] StorageStatus writeCatalogueFile(const FoodCatalogue& catalogue, ByteBuffer& out,
                                               VersionOnWrite version = VersionOnWrite::Current);

}  // namespace nutrovex
