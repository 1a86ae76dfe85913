#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <utility>

#include "storage/StorageError.h"

namespace nutrovex {

// A whole file's bytes, allocated once and not zeroed first. Large buffers are pages of their
// own, given back to the system as soon as the buffer goes, so a load leaves only its records
// resident; where the system offers large pages they take far fewer page faults to fill.
class ByteBuffer {
public:
    ByteBuffer() = default;
    explicit ByteBuffer(std::size_t size);
    ~ByteBuffer();
    ByteBuffer(ByteBuffer&& other) noexcept
        : m_data(std::exchange(other.m_data, nullptr)),
          m_size(std::exchange(other.m_size, 0)),
          m_capacity(std::exchange(other.m_capacity, 0)),
          m_mapped(other.m_mapped) {}
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;

    [[nodiscard]] uint8_t* data() { return m_data; }
    [[nodiscard]] const uint8_t* data() const { return m_data; }
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] std::span<const uint8_t> bytes() const { return {m_data, m_size}; }
    // Keeps the first `size` bytes.
    void shrink(std::size_t size) { m_size = std::min(size, m_size); }

private:
    void release() noexcept;

    uint8_t* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    bool m_mapped = false;
};

enum class ReadFile { Read, Missing, Failed };

// Reads the whole file into out. Missing only when the file does not exist (not when it exists
// but cannot be read), so callers that treat a missing file as empty never overwrite real data.
[[nodiscard]] ReadFile readWholeFile(const std::filesystem::path& path, ByteBuffer& out,
                                     StorageError& error);

// Replaces the file atomically: a temporary file in the same folder is written, flushed to the
// disk and renamed over the old one. On failure the old file is untouched and the temporary
// removed. When the folder is missing and createFolder is set, it is made (one level).
[[nodiscard]] StorageStatus writeFileAtomically(const std::filesystem::path& path,
                                                std::span<const uint8_t> bytes,
                                                bool createFolder = true);

}  // namespace nutrovex
