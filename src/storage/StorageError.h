#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace nutrovex {

// What went wrong with a file, in words a screen can show: the file, where reading stopped (chunk
// and byte offset, when known) and why. An empty reason means success.
struct StorageError {
    std::string file;     // the file's name, or its path where that helps
    int64_t chunk = -1;   // the chunk being read or written, or -1
    int64_t offset = -1;  // the byte offset in the file, or -1
    std::string reason;

    [[nodiscard]] bool failed() const { return !reason.empty(); }
    // "UserDB.ddb: chunk 4, byte 1204: the day ends 18 bytes early"
    [[nodiscard]] std::string message() const;
};

// The outcome of a read, write or user operation: success, or the first error.
class StorageStatus {
public:
    StorageStatus() = default;
    StorageStatus(StorageError error) : m_error(std::move(error)) {}  // NOLINT: errors convert

    [[nodiscard]] bool ok() const { return !m_error.failed(); }
    explicit operator bool() const { return ok(); }
    [[nodiscard]] const StorageError& error() const { return m_error; }
    [[nodiscard]] std::string message() const { return ok() ? std::string() : m_error.message(); }

private:
    StorageError m_error;
};

// A failure that concerns a whole file (opening, writing, renaming).
[[nodiscard]] StorageError fileError(std::string file, std::string reason);

// A system error number in words, never a bare number ("the disk is full").
[[nodiscard]] std::string systemReason(int errorNumber);

}  // namespace nutrovex
