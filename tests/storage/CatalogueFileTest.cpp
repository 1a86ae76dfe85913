#include <gtest/gtest.h>

#include <algorithm>

#include "storage/CatalogueFile.h"
#include "storage/StorageTestUtil.h"

namespace nutrovex {
namespace {

using test::Bytes;

Bytes serialise(const FoodCatalogue& c, VersionOnWrite v = VersionOnWrite::Current) {
    ByteBuffer out;
    const StorageStatus s = writeCatalogueFile(c, out, v);
    EXPECT_TRUE(s.ok()) << s.message();
    return Bytes(out.data(), out.data() + out.size());
}

StorageStatus parse(const Bytes& bytes, FoodCatalogue& c) {
    return readCatalogueFile(bytes, c, {"FoodDB.ddb"});
}

struct Chunk {
    uint32_t number;
    std::size_t offset;  // of the payload
    std::size_t length;
};

std::vector<Chunk> chunksOf(const Bytes& b) {
    std::vector<Chunk> out;
    for (std::size_t pos = 0; pos + 8 <= b.size();) {
        const uint32_t number = b[pos] | (b[pos + 1] << 8) | (b[pos + 2] << 16);
        const std::size_t length = b[pos + 4] | (b[pos + 5] << 8);
        out.push_back({number, pos + 8, length});
        pos += 8 + length;
    }
    return out;
}

uint16_t be16(const Bytes& b, std::size_t at) {
    return static_cast<uint16_t>((b[at] << 8) | b[at + 1]);
}

// The header's group chunk numbers, as stored: after the version, each name then its number.
std::vector<uint16_t> storedGroupChunks(const Bytes& b) {
    std::vector<uint16_t> out;
    std::size_t at = 8 + 2;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        at += 2 + be16(b, at);
        out.push_back(be16(b, at));
        at += 2;
    }
    return out;
}

TEST(CatalogueFile, AnEmptyCatalogueIsNineChunksNumberedInOrder) {
    const FoodCatalogue empty;
    const Bytes bytes = serialise(empty);
    const std::vector<Chunk> chunks = chunksOf(bytes);
    ASSERT_EQ(chunks.size(), 9u);
    for (uint32_t i = 0; i < chunks.size(); ++i) {
        EXPECT_EQ(chunks[i].number, i);
    }
    EXPECT_EQ(storedGroupChunks(bytes), (std::vector<uint16_t>{1, 2, 3, 4, 5, 6, 7, 8}));
    // Header: version, eight names with their numbers, the byte, 210 text bytes, the counter.
    std::size_t names = 0;
    for (const char* n : kStoredGroupNames) {
        names += 2 + std::string_view(n).size() + 1 + 2;
    }
    EXPECT_EQ(chunks[0].length, 2 + names + 1 + 210 + 4);
    for (std::size_t i = 1; i < 9; ++i) {
        EXPECT_EQ(chunks[i].length, 2u);  // an empty category list
    }
    EXPECT_EQ(be16(bytes, 8), 4);
}

TEST(CatalogueFile, AddingACategoryMovesTheLaterGroupsChunkNumbers) {
    FoodCatalogue c;
    test::fillCatalogue(c, {1}, 2);
    const Bytes bytes = serialise(c);
    EXPECT_EQ(storedGroupChunks(bytes), (std::vector<uint16_t>{1, 3, 4, 5, 6, 7, 8, 9}));
    const std::vector<Chunk> chunks = chunksOf(bytes);
    ASSERT_EQ(chunks.size(), 10u);
    EXPECT_EQ(be16(bytes, chunks[2].offset), 2);  // the category's food list: two foods

    // Without renumbering, both directions refuse.
    FoodCatalogue stale;
    test::fillCatalogue(stale, {}, 0);
    stale.groups[0].push_back(c.groups[0][0]);
    ByteBuffer out;
    const StorageStatus s = writeCatalogueFile(stale, out);
    EXPECT_FALSE(s.ok());
    EXPECT_NE(s.message().find("group 1's category list would be chunk 3"), std::string::npos)
        << s.message();
    EXPECT_EQ(out.size(), 0u);
}

TEST(CatalogueFile, AHeaderWhoseChunkNumbersDisagreeFailsTheLoadAndKeepsTheGroupsBefore) {
    FoodCatalogue c;
    test::fillCatalogue(c, {1, 2, 0, 1}, 1);
    Bytes bytes = serialise(c);
    // Group 3 should be chunk 1+2+3+1 = 7; the header says 8.
    std::size_t at = 8 + 2;
    for (int g = 0; g < 3; ++g) {
        at += 2 + be16(bytes, at) + 2;
    }
    at += 2 + be16(bytes, at);
    ASSERT_EQ(be16(bytes, at), 7);
    bytes[at + 1] = 8;
    FoodCatalogue back;
    const StorageStatus s = parse(bytes, back);
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().chunk, 0);
    EXPECT_EQ(s.error().offset, static_cast<int64_t>(at));
    EXPECT_NE(s.message().find("group 3's category list is chunk 7 but the header gives chunk 8"),
              std::string::npos)
        << s.message();
    EXPECT_EQ(back.groups[0].size(), 1u);
    EXPECT_EQ(back.groups[1].size(), 2u);
    EXPECT_TRUE(back.groups[3].empty());
}

TEST(CatalogueFile, RoundTripsEveryField) {
    FoodCatalogue c;
    test::fillCatalogue(c, {2, 0, 3, 1, 0, 0, 1, 4}, 3);
    c.header.version = 9;
    c.header.groupNames[2] = Text::null();
    c.header.groupNames[6] = "";
    c.header.byte = 0xAB;
    for (std::size_t t = 0; t < kFixedTextCount; ++t) {
        for (std::size_t i = 0; i < kFixedTextSize; ++i) {
            c.header.texts[t][i] = static_cast<uint8_t>(t * 31 + i * 7);
        }
    }
    c.header.keyCounter.value = 0x01020304;
    c.groups[7][3].name = Text::null();
    c.groups[7][3].foods[1].nutrients[0] = test::floatFromBits(0x7F800001);
    c.renumberGroupChunks();

    const Bytes asStored = serialise(c, VersionOnWrite::AsStored);
    FoodCatalogue back;
    const StorageStatus s = parse(asStored, back);
    ASSERT_TRUE(s.ok()) << s.message();
    EXPECT_EQ(back.header.version, 9);
    EXPECT_TRUE(back.header.groupNames[2].isNull());
    EXPECT_FALSE(back.header.groupNames[6].isNull());
    EXPECT_EQ(back.header.byte, 0xAB);
    EXPECT_EQ(back.header.texts, c.header.texts);
    EXPECT_EQ(back.header.keyCounter.value, 0x01020304u);
    EXPECT_EQ(back.foodCount(), c.foodCount());
    EXPECT_TRUE(back.groups[7][3].name.isNull());
    EXPECT_EQ(test::bitsOf(back.groups[7][3].foods[1].nutrients[0]), 0x7F800001u);
    EXPECT_EQ(serialise(back, VersionOnWrite::AsStored), asStored);
    // The program always writes version 4; the counter stays raw little-endian.
    const Bytes current = serialise(back);
    EXPECT_EQ(be16(current, 8), 4);
    const std::size_t counterAt = chunksOf(current)[0].offset + chunksOf(current)[0].length - 4;
    EXPECT_EQ(Bytes(current.begin() + static_cast<long>(counterAt),
                    current.begin() + static_cast<long>(counterAt) + 4),
              (Bytes{4, 3, 2, 1}));
}

TEST(CatalogueFile, EveryTruncationFailsCleanlyAndKeepsWhatWasRead) {
    FoodCatalogue c;
    test::fillCatalogue(c, {1, 0, 2}, 2);
    const Bytes whole = serialise(c);
    const std::vector<Chunk> chunks = chunksOf(whole);
    ASSERT_EQ(chunks.size(), 12u);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
        FoodCatalogue back;
        const StorageStatus s = parse(cut, back);
        ASSERT_FALSE(s.ok()) << size;
        std::size_t complete = 0;
        while (complete < chunks.size() &&
               chunks[complete].offset + chunks[complete].length <= size) {
            ++complete;
        }
        EXPECT_EQ(s.error().chunk, static_cast<int64_t>(complete)) << size;
        EXPECT_LE(static_cast<std::size_t>(s.error().offset), size);
        // Chunk 2 is group 0's one category's foods; chunk 4 is group 2's list.
        EXPECT_EQ(back.groups[0].size(), complete >= 2 ? 1u : 0u) << size;
        if (complete >= 2) {
            EXPECT_EQ(back.groups[0][0].foods.size(), complete >= 3 ? 2u : 0u) << size;
        }
        EXPECT_EQ(back.groups[2].size(), complete >= 5 ? 2u : 0u) << size;
    }
}

TEST(CatalogueFile, AHostileCategoryCountCannotReserveMoreThanTheFileHolds) {
    FoodCatalogue c;
    Bytes bytes = serialise(c);
    const std::vector<Chunk> chunks = chunksOf(bytes);
    bytes[chunks[1].offset] = 0xFF;
    bytes[chunks[1].offset + 1] = 0xFF;
    FoodCatalogue back;
    const StorageStatus s = parse(bytes, back);
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.error().chunk, 1);
    EXPECT_NE(s.message().find("65535 categories"), std::string::npos) << s.message();
}

}  // namespace
}  // namespace nutrovex
