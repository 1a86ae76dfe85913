#include "session/SessionSettings.h"

#include <cstdlib>

#include "storage/DataRoot.h"

namespace nutrovex {

DataRootChoice chooseDataRoot(std::string_view rootOption) {
    if (!rootOption.empty()) {
        return {std::filesystem::path(rootOption), true};
    }
    if (const char* env = std::getenv("NUTROVEX_ROOT"); env != nullptr && env[0] != 0) {
        return {std::filesystem::path(env), true};
    }
    return {defaultDataRoot(), false};
}

}  // namespace nutrovex
