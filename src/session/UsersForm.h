#pragma once

#include <string_view>

#include "core/ScreenMessage.h"

namespace nutrovex {

// The users screen's messages: what a failed start-up load, a refused add, rename or delete, and
// the delete question say. The screen shows them; the session's user operations decide when.
struct UsersForm {
    // "Error loading data files. ...": the start-up load could not read the data files.
    [[nodiscard]] static ScreenMessage loadError();
    [[nodiscard]] static ScreenMessage addRefusal();
    [[nodiscard]] static ScreenMessage renameRefusal();
    [[nodiscard]] static ScreenMessage confirmDelete(std::string_view name);
    [[nodiscard]] static ScreenMessage deleteRefusal();
};

}  // namespace nutrovex
