#include "storage/Chunks.h"

namespace nutrovex {

ByteReader ChunkReader::next(std::string what) {
    return header(std::move(what), 0, false);
}

ByteReader ChunkReader::nextFixed(std::string what, std::size_t size) {
    return header(std::move(what), size, true);
}

ByteReader ChunkReader::header(std::string what, std::size_t fixedSize, bool fixed) {
    if (m_started) {
        ++m_chunk;
    }
    m_started = true;
    m_what = std::move(what);
    const ByteReader none(std::span<const uint8_t>(), m_pos);
    if (!ok()) {
        return none;
    }
    const std::size_t fileSize = m_source.size();
    const std::size_t left = fileSize - m_pos;
    if (left < kChunkHeaderSize) {
        fail(m_pos, left == 0 ? "the file ends before this chunk"
                              : "the chunk header needs 8 bytes but only " + std::to_string(left) +
                                    " are left");
        return none;
    }
    const std::span<const uint8_t> headerBytes = m_source.bytes(m_pos, kChunkHeaderSize);
    if (headerBytes.size() != kChunkHeaderSize) {
        fail(m_pos, "the file cannot be read: " + m_source.failure());
        return none;
    }
    ByteReader h(headerBytes, m_pos);
    const uint32_t number = h.u32le();
    const uint32_t length = h.u32le();
    if (number != m_chunk) {
        fail(m_pos, "the chunk is numbered " + std::to_string(number) + " instead of " +
                        std::to_string(m_chunk));
        return none;
    }
    if (fixed && length != fixedSize) {
        fail(m_pos + 4, "the payload length is " + std::to_string(length) + " instead of " +
                            std::to_string(fixedSize));
        return none;
    }
    const std::size_t size = fixed ? fixedSize : length;
    if (!fixed && size > kMaxPayloadSize) {
        fail(m_pos + 4,
             "the payload length " + std::to_string(size) + " is beyond the format's 65,535 bytes");
        return none;
    }
    const std::size_t start = m_pos + kChunkHeaderSize;
    if (size > fileSize - start) {
        fail(start, "the payload of " + std::to_string(size) + " bytes ends " +
                        std::to_string(size - (fileSize - start)) + " bytes early");
        return none;
    }
    const std::span<const uint8_t> payload = m_source.bytes(start, size);
    if (payload.size() != size) {
        fail(start, "the file cannot be read: " + m_source.failure());
        return none;
    }
    m_pos = start + size;
    return ByteReader(payload, start);
}

bool ChunkReader::finish(const ByteReader& payload) {
    if (!ok()) {
        return false;
    }
    if (!payload.ok()) {
        fail(payload.errorOffset(), payload.error());
        return false;
    }
    if (payload.remaining() != 0) {
        fail(payload.offset(), std::to_string(payload.remaining()) +
                                   " bytes of the payload are left over: its counts say less "
                                   "than it holds");
        return false;
    }
    return true;
}

bool ChunkReader::end() {
    if (ok() && m_pos != m_source.size()) {
        m_started = true;
        ++m_chunk;
        m_what.clear();
        fail(m_pos, std::to_string(m_source.size() - m_pos) +
                        " bytes follow the last chunk that the file's counts account for");
    }
    return ok();
}

void ChunkReader::fail(std::size_t offset, std::string reason) {
    if (!ok()) {
        return;
    }
    m_error.file = m_options.fileName;
    m_error.chunk = m_chunk;
    m_error.offset = static_cast<int64_t>(offset);
    m_error.reason = m_what.empty() ? std::move(reason) : m_what + ": " + reason;
}

void ChunkReader::failIn(uint32_t chunk, std::string what, std::size_t offset, std::string reason) {
    if (!ok()) {
        return;
    }
    m_chunk = chunk;
    m_what = std::move(what);
    fail(offset, std::move(reason));
}

StorageError payloadTooLarge(const std::string& file, uint32_t chunk, const std::string& what,
                             std::size_t size) {
    StorageError e;
    e.file = file;
    e.chunk = chunk;
    e.reason =
        what + " takes " + std::to_string(size) + " bytes, more than the 65,535 a chunk can hold";
    return e;
}

}  // namespace nutrovex
