#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "storage/StorageError.h"

namespace nutrovex {

// The side files beside a person's data files hold what the three binary formats have no room
// for (recipes, targets). They are JSON in UTF-8, saved atomically like the data files and read
// strictly: a file that is not exactly what its writer writes (a field unknown or given twice, a
// value of the wrong kind or out of range, anything after the document) is not read, and is
// then never written over until a read of it succeeds.

// No side file written by the program comes near this; a larger one is refused unread.
inline constexpr std::size_t kMaxSideFileSize = std::size_t{16} << 20;

enum class SideFileLoad : uint8_t {
    Read,     // read whole
    Missing,  // there is none: nothing was set up yet
    Failed,   // could not be read whole; status says where and why
};

struct SideFileResult {
    SideFileLoad outcome = SideFileLoad::Failed;
    StorageStatus status;

    [[nodiscard]] bool usable() const { return outcome != SideFileLoad::Failed; }
};

// Reads a side file's bytes whole, refusing one larger than kMaxSideFileSize.
[[nodiscard]] SideFileResult readSideFileText(const std::filesystem::path& path, std::string& text);

// Reads a side file whole and parses its text into value: a missing file leaves value empty (a
// default-made T); one that does not parse is Failed with the parser's status.
template <typename T, typename Parse>
[[nodiscard]] SideFileResult loadSideFile(const std::filesystem::path& path, T& value,
                                          Parse parse) {
    std::string text;
    SideFileResult result = readSideFileText(path, text);
    if (result.outcome == SideFileLoad::Missing) {
        value = T{};
    } else if (result.outcome == SideFileLoad::Read) {
        if (StorageStatus parsed = parse(text, value); !parsed) {
            return {SideFileLoad::Failed, parsed};
        }
    }
    return result;
}

// Replaces a side file atomically (the folder must exist).
[[nodiscard]] StorageStatus writeSideFile(const std::filesystem::path& path, std::string_view text);

}  // namespace nutrovex
