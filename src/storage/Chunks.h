#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/StoredSize.h"
#include "storage/ByteCursor.h"
#include "storage/StorageError.h"

namespace nutrovex {

// Every file is a sequence of chunks: u32 chunk number and u32 payload length, both
// little-endian, then the payload. Payloads stay below 65,536 bytes (kMaxPayloadSize).
inline constexpr std::size_t kChunkHeaderSize = 8;

// How a file is read. There is one way for everyone (the program, the tool's dumps and writers
// and its check): a file reads whole only when every byte is accounted for, so that writing back
// what was read gives the same bytes. A chunk numbered out of place, a payload longer than its
// counts say, anything after the last chunk and a text whose last byte is not zero all fail the
// read, naming the chunk and the offset.
struct ReadOptions {
    std::string fileName;  // names the file in errors
};

// Where a file's bytes come from: a buffer in memory, or the file itself read a window at a time
// (FileIo.h), so a large file is parsed from a small buffer that stays in the cache.
class ChunkSource {
public:
    virtual ~ChunkSource() = default;
    [[nodiscard]] virtual std::size_t size() const = 0;
    // Bytes [offset, offset + n), valid until the next call; offset + n is at most size() and n
    // at most a chunk header and a whole payload. Fewer come back only when reading failed.
    [[nodiscard]] virtual std::span<const uint8_t> bytes(std::size_t offset, std::size_t n) = 0;
    // Why bytes() came back short.
    [[nodiscard]] virtual std::string failure() const { return {}; }
};

class MemorySource final : public ChunkSource {
public:
    explicit MemorySource(std::span<const uint8_t> bytes) : m_bytes(bytes) {}
    [[nodiscard]] std::size_t size() const override { return m_bytes.size(); }
    [[nodiscard]] std::span<const uint8_t> bytes(std::size_t offset, std::size_t n) override {
        return m_bytes.subspan(offset, n);
    }

private:
    std::span<const uint8_t> m_bytes;
};

// Walks a whole file chunk by chunk. Each chunk's payload is read through its own ByteReader;
// the first error anywhere is kept with the chunk and the file offset where reading stopped.
class ChunkReader {
public:
    ChunkReader(ChunkSource& source, ReadOptions options)
        : m_source(source), m_options(std::move(options)) {}

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
    // Ends the chunk: a payload error becomes the file's, and so does a byte left unread.
    bool finish(const ByteReader& payload);
    // Fails when anything follows the last chunk.
    bool end();

    // Fails at the current chunk without a payload error (a mismatch found by the caller).
    void fail(std::size_t offset, std::string reason);
    // Fails naming an earlier chunk, where the mismatch lies.
    void failIn(uint32_t chunk, std::string what, std::size_t offset, std::string reason);

private:
    ByteReader header(std::string what, std::size_t fixedSize, bool fixed);

    ChunkSource& m_source;
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

// Where a writer's chunks go: a buffer in memory, or a file written a window at a time
// (AtomicFile in FileIo.h), so saving never holds a whole large file in memory.
class ChunkSink {
public:
    virtual ~ChunkSink() = default;
    // Room for one whole chunk of n bytes (header and payload), to fill before the next call.
    [[nodiscard]] virtual uint8_t* room(std::size_t n) = 0;
};

// Collects the chunks in memory.
class BufferSink final : public ChunkSink {
public:
    [[nodiscard]] uint8_t* room(std::size_t n) override {
        const std::size_t used = m_bytes.size();
        m_bytes.resize(used + n);
        return m_bytes.data() + used;
    }
    [[nodiscard]] std::vector<uint8_t>& bytes() { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};

// Starts a chunk in the sink: its header is written, the payload is the caller's to write.
inline ByteWriter beginChunk(ChunkSink& sink, uint32_t number, std::size_t length) {
    uint8_t* p = sink.room(kChunkHeaderSize + length);
    ByteWriter w(p, p + kChunkHeaderSize + length);
    writeChunkHeader(w, number, length);
    return w;
}

// The error for a payload that would not fit the format.
[[nodiscard]] StorageError payloadTooLarge(const std::string& file, uint32_t chunk,
                                           const std::string& what, std::size_t size);

}  // namespace nutrovex
