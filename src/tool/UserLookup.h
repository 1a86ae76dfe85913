#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string_view>

namespace nutrovex::tool {

// The folder of a user listed in the data root's user list, read without side effects (a
// missing list is not written). nullopt, with the reason on err, when there is no such user.
[[nodiscard]] std::optional<std::filesystem::path> listedUserFolder(
    const std::filesystem::path& root, std::string_view user, std::ostream& err);

}  // namespace nutrovex::tool
