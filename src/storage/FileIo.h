#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "storage/StorageError.h"

namespace nutrovex {

// A whole file's bytes, allocated once and not zeroed first.
class ByteBuffer {
public:
    ByteBuffer() = default;
    explicit ByteBuffer(std::size_t size)
        : m_data(std::make_unique_for_overwrite<uint8_t[]>(size)), m_size(size) {}

    [[nodiscard]] uint8_t* data() { return m_data.get(); }
    [[nodiscard]] const uint8_t* data() const { return m_data.get(); }
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] std::span<const uint8_t> bytes() const { return {m_data.get(), m_size}; }

private:
    std::unique_ptr<uint8_t[]> m_data;
    std::size_t m_size = 0;
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
