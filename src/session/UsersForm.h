#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"

namespace nutrovex {

// The users screen's messages: what a failed start-up load, a refused add, rename or delete, and
// the delete question say. The screen shows them; the session's user operations decide when.
struct UsersForm {
    // "Error loading data files. ...": the start-up load could not read the data files.
    [[nodiscard]] static ScreenMessage loadError();
    // Why New... or Rename... was refused for the name typed: a name that cannot be a user's
    // folder says why, and so does nullopt (a name Windows-1252 cannot hold); any other name gets
    // the duplicate-name text.
    [[nodiscard]] static ScreenMessage addRefusal(const std::optional<std::string>& name);
    [[nodiscard]] static ScreenMessage renameRefusal(const std::optional<std::string>& newName);
    [[nodiscard]] static ScreenMessage confirmDelete(std::string_view name);
    [[nodiscard]] static ScreenMessage deleteRefusal();
};

}  // namespace nutrovex
