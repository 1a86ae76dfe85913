#include "session/UsersForm.h"

#include <string>

#include "core/Cp1252.h"
#include "storage/DataRoot.h"

namespace nutrovex {

ScreenMessage UsersForm::loadError() {
    return {"Error loading data files. Please reinstall Nutrovex.", "Registry Error",
            MessageKind::Critical};
}

namespace {

// The second sentence of a refusal: why the name cannot be a user's, else the duplicate hint.
std::string refusalReason(const std::optional<std::string>& name) {
    if (!name) {
        return "A user name can hold only the characters of Windows-1252.";
    }
    if (!isSafeUserName(*name)) {
        std::string reason = unsafeUserNameReason(*name);
        reason[0] = static_cast<char>(reason[0] - 'a' + 'A');
        return reason + ".";
    }
    return "Make sure you are not inputting a duplicate name.";
}

}  // namespace

ScreenMessage UsersForm::addRefusal(const std::optional<std::string>& name) {
    return {"Could not add the user.  " + refusalReason(name), "New User", MessageKind::Warning};
}

ScreenMessage UsersForm::renameRefusal(const std::optional<std::string>& newName) {
    return {"Could not rename the user.  " + refusalReason(newName), "Rename User",
            MessageKind::Warning};
}

ScreenMessage UsersForm::confirmDelete(std::string_view name) {
    return {"Delete the user name and ALL ASSOCIATED DATA of " + quotedText(name) + "?",
            "Delete User", MessageKind::Question};
}

ScreenMessage UsersForm::deleteRefusal() {
    return {"Could not delete the user.", "Delete User", MessageKind::Warning};
}

}  // namespace nutrovex
