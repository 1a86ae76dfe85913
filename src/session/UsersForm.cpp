#include "session/UsersForm.h"

#include <string>

namespace nutrovex {

ScreenMessage UsersForm::loadError() {
    return {"Error loading data files. Please reinstall Nutrovex.", "Registry Error",
            MessageKind::Critical};
}

ScreenMessage UsersForm::addRefusal() {
    return {"Could not add the user.  Make sure you are not inputting a duplicate name.",
            "New User", MessageKind::Warning};
}

ScreenMessage UsersForm::renameRefusal() {
    return {"Could not rename the user.  Make sure you are not inputting a duplicate name.",
            "Rename User", MessageKind::Warning};
}

ScreenMessage UsersForm::confirmDelete(std::string_view name) {
    return {"Delete the user name and ALL ASSOCIATED DATA of '" + std::string(name) + "'?",
            "Delete User", MessageKind::Question};
}

ScreenMessage UsersForm::deleteRefusal() {
    return {"Could not delete the user.", "Delete User", MessageKind::Warning};
}

}  // namespace nutrovex
