#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "DamagedFiles.h"

namespace nutrovex::test {

using FileMap = std::map<std::filesystem::path, FileBytes>;

// What a run stopped part way may leave in a root once the next start has swept it: every file
// as it was before the run or as a whole run leaves it, and nothing else. Empty when so, else
// what is wrong.
inline std::string unlessOldOrNew(const FileMap& before, const FileMap& after, const FileMap& now) {
    std::set<std::filesystem::path> paths;
    for (const FileMap* m : {&before, &after, &now}) {
        for (const auto& [path, bytes] : *m) {
            paths.insert(path);
        }
    }
    std::string wrong;
    for (const std::filesystem::path& path : paths) {
        const auto find = [&](const FileMap& m) -> const FileBytes* {
            const auto it = m.find(path);
            return it == m.end() ? nullptr : &it->second;
        };
        const FileBytes* was = find(before);
        const FileBytes* will = find(after);
        const FileBytes* is = find(now);
        const bool same = (is == nullptr && (was == nullptr || will == nullptr)) ||
                          (is != nullptr &&
                           ((was != nullptr && *is == *was) || (will != nullptr && *is == *will)));
        if (!same) {
            wrong +=
                path.string() + (is == nullptr ? " is gone" : " is neither old nor new") + "; ";
        }
    }
    return wrong;
}

}  // namespace nutrovex::test
