#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "storage/ByteCursor.h"
#include "storage/StorageError.h"

namespace nutrovex {

// Every file is a sequence of chunks: u32 chunk number and u32 payload length, both
// little-endian, then the payload. Payloads stay below 65,536 bytes (their offsets are 16-bit).
inline constexpr std::size_t kChunkHeaderSize = 8;
inline constexpr std::size_t kMaxPayloadSize = 0xFFFF;

struct ReadOptions {
    std::string fileName;  // names the file in errors
    // The program reads as the format always has: chunk numbers unseen, a payload's unused tail
    // and anything after the last chunk ignored. Strict reading (the tool's check) reports those
    // too, and a text whose last byte is not zero.
    bool strict = false;
};

// Walks a whole file chunk by chunk. Each chunk's payload is read through its own ByteReader;
// the first error anywhere is kept with the chunk and the file offset where reading stopped.
class ChunkReader {
public:
    ChunkReader(std::span<const uint8_t> file, ReadOptions options)
        : m_file(file), m_options(std::move(options)) {}

    [[nodiscard]] bool ok() const { return !m_error.failed(); }
    [[nodiscard]] StorageStatus status() const { return m_error; }
    [[nodiscard]] const ReadOptions& options() const { return m_options; }
    // The number of the chunk being read (its position in the file).
    [[nodiscard]] uint32_t chunk() const { return m_chunk; }

    // Reads the next chunk's header and returns a reader over its whole payload. `what` names
    // the chunk in errors ("the header", "day 12"). On failure the reader is empty and ok() false.
    ByteReader next(std::string what);
    // The same for a chunk whose reader takes a fixed number of bytes whatever its header says.
    ByteReader nextFixed(std::string what, std::size_t size);
    // Ends the chunk: a payload error becomes the file's; strict reading wants every byte used.
    bool finish(const ByteReader& payload);
    // Strict reading wants nothing after the last chunk.
    bool end();

    // Fails at the current chunk without a payload error (a mismatch found by the caller).
    void fail(std::size_t offset, std::string reason);

private:
    ByteReader header(std::string what, std::size_t fixedSize, bool fixed);

    std::span<const uint8_t> m_file;
    ReadOptions m_options;
    std::size_t m_pos = 0;
    uint32_t m_chunk = 0;
    bool m_started = false;
    std::string m_what;
    StorageError m_error;
};

inline void writeChunkHeader(ByteWriter& w, uint32_t number, std::size_t length) {
    w.u32le(number);
    w.u32le(static_cast<uint32_t>(length));
}

// The error for a payload that would not fit the format.
[[nodiscard]] StorageError payloadTooLarge(const std::string& file, uint32_t chunk,
                                           const std::string& what, std::size_t size);

}  // namespace nutrovex
