#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace nutrovex::test {

// Files damaged in the ways that once let a read stop short of the end and a save drop the rest:
// a count lower than what follows, bytes after the last chunk, a payload longer than its fields,
// a chunk numbered out of place, and a file cut short. Each works on the chunk layout alone
// (u32 number and u32 length, little-endian, then the payload), so one set serves all three
// files.
using FileBytes = std::vector<uint8_t>;

struct ChunkPlace {
    std::size_t offset;  // of the chunk's header
    uint32_t length;     // of its payload
};

inline std::vector<ChunkPlace> chunkPlaces(const FileBytes& b) {
    std::vector<ChunkPlace> chunks;
    std::size_t at = 0;
    while (at + 8 <= b.size()) {
        const uint32_t length = b[at + 4] | (b[at + 5] << 8) | (b[at + 6] << 16) |
                                (static_cast<uint32_t>(b[at + 7]) << 24);
        chunks.push_back({at, length});
        at += 8 + length;
    }
    return chunks;
}

// The big-endian count at `payloadOffset` of chunk `chunk`, lowered by `by`.
inline FileBytes countLowered(FileBytes b, std::size_t chunk, std::size_t payloadOffset,
                              uint16_t by = 1) {
    const std::size_t at = chunkPlaces(b).at(chunk).offset + 8 + payloadOffset;
    const auto count = static_cast<uint16_t>((b.at(at) << 8 | b.at(at + 1)) - by);
    b[at] = static_cast<uint8_t>(count >> 8);
    b[at + 1] = static_cast<uint8_t>(count);
    return b;
}

inline FileBytes withBytesAfterTheLastChunk(FileBytes b) {
    b.insert(b.end(), {0, 0, 0, 0, 'x', 'y', 'z'});
    return b;
}

// One zero byte more at the end of chunk `chunk`'s payload, its length grown to match.
inline FileBytes withLongerPayload(FileBytes b, std::size_t chunk) {
    const ChunkPlace place = chunkPlaces(b).at(chunk);
    b.insert(b.begin() + static_cast<long>(place.offset + 8 + place.length), 0);
    const uint32_t length = place.length + 1;
    for (int i = 0; i < 4; ++i) {
        b[place.offset + 4 + static_cast<std::size_t>(i)] = static_cast<uint8_t>(length >> (8 * i));
    }
    return b;
}

inline FileBytes renumbered(FileBytes b, std::size_t chunk) {
    b.at(chunkPlaces(b).at(chunk).offset) ^= 0x40;
    return b;
}

inline FileBytes cutShort(FileBytes b) {
    b.pop_back();
    return b;
}

struct Damaged {
    std::string how;
    FileBytes bytes;
};

// The generic damages of a file whose counted list lies at `payloadOffset` of chunk
// `countedChunk` and whose last chunk is `lastChunk`.
inline std::vector<Damaged> damagedVersions(const FileBytes& whole, std::size_t countedChunk,
                                            std::size_t payloadOffset, std::size_t lastChunk) {
    return {
        {"a count one lower", countLowered(whole, countedChunk, payloadOffset)},
        {"bytes after the last chunk", withBytesAfterTheLastChunk(whole)},
        {"a payload longer than its fields", withLongerPayload(whole, lastChunk)},
        {"a chunk numbered out of place", renumbered(whole, lastChunk)},
        {"a file cut short", cutShort(whole)},
    };
}

inline FileBytes fileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void putFileBytes(const std::filesystem::path& path, const FileBytes& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

// Every file below a folder, by its path relative to the folder, with its bytes.
inline std::map<std::filesystem::path, FileBytes> everyFile(const std::filesystem::path& folder) {
    std::map<std::filesystem::path, FileBytes> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[std::filesystem::relative(entry.path(), folder)] = fileBytes(entry.path());
        }
    }
    return files;
}

}  // namespace nutrovex::test
