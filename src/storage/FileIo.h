#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "storage/Chunks.h"
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
    explicit ByteBuffer(std::span<const uint8_t> bytes) : ByteBuffer(bytes.size()) {
        std::copy(bytes.begin(), bytes.end(), m_data);
    }
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

// Readies `bytes` of heap for the records of a load while it lives: the heap grows by that much
// at once and its pages are made resident in one call, rather than in a page fault each as the
// records fill them (a fault costs microseconds where the program runs, and a load of the largest
// files took over 10,000). Only for what the load will fill: its file's size tells that.
class HeapReserve {
public:
    explicit HeapReserve(std::size_t bytes);
    ~HeapReserve();
    HeapReserve(const HeapReserve&) = delete;
    HeapReserve& operator=(const HeapReserve&) = delete;

private:
    bool m_active = false;
};

enum class ReadFile { Read, Missing, Failed };

// Reads the whole file into out. Missing only when the file does not exist (not when it exists
// but cannot be read), so callers that treat a missing file as empty never overwrite real data.
[[nodiscard]] ReadFile readWholeFile(const std::filesystem::path& path, ByteBuffer& out,
                                     StorageError& error);

// A file read a window at a time for the chunk readers: the file is read once, in order, into a
// buffer small enough to stay in the cache, whatever the file's size.
class FileSource final : public ChunkSource {
public:
    FileSource() = default;
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    // Missing only when the file does not exist, as for readWholeFile.
    [[nodiscard]] ReadFile open(const std::filesystem::path& path, StorageError& error);

    [[nodiscard]] std::size_t size() const override { return m_size; }
    [[nodiscard]] std::span<const uint8_t> bytes(std::size_t offset, std::size_t n) override;
    [[nodiscard]] std::string failure() const override { return m_failure; }

private:
    int m_fd = -1;
    std::size_t m_size = 0;
    ByteBuffer m_window;
    std::size_t m_start = 0;   // the file offset of the window's first byte
    std::size_t m_length = 0;  // bytes of the window that hold the file
    std::string m_failure;
};

// Replaces a file atomically, written a window at a time: a temporary file in the same folder is
// written, flushed to the disk and renamed over the old one by commit(). Until then, and when
// anything fails, the old file is untouched; a file never committed is removed.
class AtomicFile final : public ChunkSink {
public:
    explicit AtomicFile(std::filesystem::path path);
    ~AtomicFile() override;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Creates the temporary file; a missing folder is made (one level) when createFolder is set.
    [[nodiscard]] StorageStatus open(bool createFolder);
    [[nodiscard]] uint8_t* room(std::size_t n) override;
    void write(std::span<const uint8_t> bytes);
    // Writes what is left, flushes it to the disk and puts the file in place of the old one.
    [[nodiscard]] StorageStatus commit();
    // Drops the temporary file.
    void abandon();

private:
    void flush();

    std::filesystem::path m_path;
    std::string m_tempPath;
    int m_fd = -1;
    ByteBuffer m_window;
    std::size_t m_used = 0;
    int m_errno = 0;  // the first write failure
};

// Where the tool writes what it is asked to write (a CSV, a picture, a file made from JSON). A
// regular file, or none yet, is replaced atomically as AtomicFile does. What is not a regular file
// is never replaced: a character device or a FIFO (a terminal, /dev/null, a pipe) is written
// through, a symbolic link is followed and the same rules apply to what it names, and anything
// else (a folder, a socket, a block device, a link to nothing) is refused with the reason.
class OutputFile final : public ChunkSink {
public:
    explicit OutputFile(std::filesystem::path path);
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] StorageStatus open();
    [[nodiscard]] uint8_t* room(std::size_t n) override;
    void write(std::span<const uint8_t> bytes);
    // Puts a replaced file in place, or ends writing through; says why either failed.
    [[nodiscard]] StorageStatus commit();
    // Drops a replacement; what was written through a device or FIFO is gone already.
    void abandon();

private:
    void flush();

    std::filesystem::path m_path;
    std::unique_ptr<AtomicFile> m_replace;
    int m_fd = -1;  // the device or FIFO written through
    ByteBuffer m_window;
    std::size_t m_used = 0;
    int m_errno = 0;
};

// Writes the bytes to an output as OutputFile does.
[[nodiscard]] StorageStatus writeOutputFile(const std::filesystem::path& path,
                                            std::span<const uint8_t> bytes);

// Replaces the file atomically: a temporary file in the same folder is written, flushed to the
// disk and renamed over the old one. On failure the old file is untouched and the temporary
// removed. When the folder is missing and createFolder is set, it is made (one level).
[[nodiscard]] StorageStatus writeFileAtomically(const std::filesystem::path& path,
                                                std::span<const uint8_t> bytes,
                                                bool createFolder = true);

// Flushes a folder's entries to the disk, so that a file renamed or made in it stays there.
void syncFolder(const std::filesystem::path& folder);

// Moves a folder to a new name in the same file system; never over anything already there, not
// even an empty folder.
[[nodiscard]] StorageStatus moveFolder(const std::filesystem::path& from,
                                       const std::filesystem::path& to);

// Removes the temporary files that saves of the given files left in folder when their process
// was killed (".UserDB.ddb.tmp1234-0"), and nothing else; this process's own are kept. Only for
// whoever holds the data root's lock, so that no other save can be under way. Returns how many
// were removed.
std::size_t removeStaleTemporaries(const std::filesystem::path& folder,
                                   std::span<const std::string_view> fileNames);

}  // namespace nutrovex
