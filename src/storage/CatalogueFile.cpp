#include "storage/CatalogueFile.h"

#include <algorithm>
#include <vector>

#include "storage/Records.h"

namespace nutrovex {

namespace {

constexpr std::size_t kMinCategorySize = 4 + 1 + 2;

std::size_t headerSize(const CatalogueHeader& h) {
    std::size_t n = 2 + 1 + kFixedTextCount * kFixedTextSize + 4;
    for (const Text& name : h.groupNames) {
        n += textSize(name) + 2;
    }
    return n;
}

std::size_t categoryListSize(const CategoryList& list) {
    std::size_t n = 2;
    for (const FoodCategory& c : list) {
        n += 4 + 1 + textSize(c.name);
    }
    return n;
}

std::string groupLabel(std::size_t g) {
    return "group " + std::to_string(g);
}

std::string categoryLabel(std::size_t g, std::size_t c) {
    return groupLabel(g) + ", category " + std::to_string(c + 1);
}

}  // namespace

StorageStatus readCatalogueFile(ChunkSource& source, FoodCatalogue& catalogue,
                                const ReadOptions& options) {
    catalogue.reset();
    ChunkReader chunks(source, options);

    ByteReader h = chunks.next("the header");
    CatalogueHeader header;
    std::array<std::size_t, kFoodGroupCount> chunkFieldOffsets{};
    header.version = h.u16be();
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        header.groupNames[g] = h.text();
        chunkFieldOffsets[g] = h.offset();
        header.groupChunks[g] = h.u16be();
    }
    header.byte = h.u8();
    for (auto& text : header.texts) {
        h.raw(text.data(), text.size());
    }
    header.keyCounter.value = h.u32le();  // raw little-endian, unlike the payload numbers
    if (!chunks.finish(h)) {
        return chunks.status();
    }
    catalogue.header = header;

    uint32_t running = 1;
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        if (header.groupChunks[g] != running) {
            // Reported where the header holds the wrong number.
            chunks.failIn(0, "the header", chunkFieldOffsets[g],
                          groupLabel(g) + "'s category list is chunk " + std::to_string(running) +
                              " but the header gives chunk " +
                              std::to_string(header.groupChunks[g]));
            return chunks.status();
        }
        ByteReader r = chunks.next(groupLabel(g) + "'s category list");
        CategoryList& list = catalogue.groups[g];
        const uint16_t count = r.u16be();
        if (r.ok() && static_cast<std::size_t>(count) * kMinCategorySize > r.remaining()) {
            r.fail("a list of " + std::to_string(count) + " categories needs at least " +
                   std::to_string(count * kMinCategorySize) + " bytes but only " +
                   std::to_string(r.remaining()) + " are left");
        }
        if (r.ok()) {
            list.reserve(count);
        }
        for (uint16_t c = 0; c < count && r.ok(); ++c) {
            FoodCategory category;
            category.key.value = r.u32be();
            category.byte = r.u8();
            category.name = r.text();
            if (r.ok()) {
                list.push_back(std::move(category));
            }
        }
        if (!chunks.finish(r)) {
            return chunks.status();
        }
        ++running;
        for (std::size_t c = 0; c < list.size(); ++c) {
            ByteReader f = chunks.next("the foods of " + categoryLabel(g, c));
            readFoodList(f, list[c].foods);
            if (!chunks.finish(f)) {
                return chunks.status();
            }
            ++running;
        }
    }
    chunks.end();
    return chunks.status();
}

StorageStatus writeCatalogueFile(const FoodCatalogue& catalogue, ChunkSink& sink,
                                 VersionOnWrite version) {
    const CatalogueHeader& header = catalogue.header;
    uint32_t running = 1;
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        if (header.groupChunks[g] != running) {
            StorageError e = fileError(
                kCatalogueFileName, groupLabel(g) + "'s category list would be chunk " +
                                        std::to_string(running) + " but the header gives chunk " +
                                        std::to_string(header.groupChunks[g]));
            e.chunk = 0;
            return e;
        }
        running +=
            1 + static_cast<uint32_t>(std::min<std::size_t>(catalogue.groups[g].size(), 0x10000));
    }
    const std::size_t headerBytes = headerSize(header);
    if (headerBytes > kMaxPayloadSize) {
        return payloadTooLarge(kCatalogueFileName, 0, "the header", headerBytes);
    }

    ByteWriter w = beginChunk(sink, 0, headerBytes);
    w.u16be(version == VersionOnWrite::Current ? kCatalogueVersion : header.version);
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        w.text(header.groupNames[g]);
        w.u16be(header.groupChunks[g]);
    }
    w.u8(header.byte);
    for (const auto& text : header.texts) {
        w.raw(text.data(), text.size());
    }
    w.u32le(header.keyCounter.value);

    running = 1;
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        const CategoryList& list = catalogue.groups[g];
        const std::size_t listBytes = categoryListSize(list);
        if (listBytes > kMaxPayloadSize || list.size() > 0xFFFF) {
            return payloadTooLarge(kCatalogueFileName, running, groupLabel(g) + "'s category list",
                                   listBytes);
        }
        ByteWriter l = beginChunk(sink, running++, listBytes);
        l.u16be(static_cast<uint16_t>(list.size()));
        for (const FoodCategory& c : list) {
            l.u32be(c.key.value);
            l.u8(c.byte);
            l.text(c.name);
        }
        for (std::size_t c = 0; c < list.size(); ++c) {
            const FoodList& foods = list[c].foods;
            const std::size_t foodBytes = foodListSize(foods);
            if (foodBytes > kMaxPayloadSize || foods.size() > 0xFFFF) {
                return payloadTooLarge(kCatalogueFileName, running,
                                       "the foods of " + categoryLabel(g, c), foodBytes);
            }
            ByteWriter f = beginChunk(sink, running++, foodBytes);
            writeFoodList(f, foods);
        }
    }
    return {};
}

StorageStatus writeCatalogueFile(const FoodCatalogue& catalogue, ByteBuffer& out,
                                 VersionOnWrite version) {
    BufferSink sink;
    StorageStatus status = writeCatalogueFile(catalogue, sink, version);
    if (status) {
        out = ByteBuffer(sink.bytes());
    }
    return status;
}

}  // namespace nutrovex
