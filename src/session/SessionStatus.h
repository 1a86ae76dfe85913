#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/ScreenMessage.h"
#include "storage/StorageError.h"

namespace nutrovex {

// The outcome of a session operation: every failure in words a screen can show, naming the file
// and why. Empty when everything went well.
struct SessionStatus {
    std::vector<std::string> failures;

    [[nodiscard]] bool ok() const { return failures.empty(); }
    explicit operator bool() const { return ok(); }
    [[nodiscard]] std::string message() const;
    void add(const StorageStatus& status);
    void add(std::string failure) { failures.push_back(std::move(failure)); }
    // The warning a screen shows for it; none when everything went well.
    [[nodiscard]] std::optional<ScreenMessage> warning() const;
};

}  // namespace nutrovex
