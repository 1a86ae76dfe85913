#include "forms/frame/UsersForm.h"

#include "session/Session.h"

namespace nutrovex {

namespace {

constexpr Notices kUserChanged{.userChanged = true};

}  // namespace

UsersForm::UsersForm(Session& session) : m_session(&session) {
    const Position pre = session.preselectedUser();
    if (pre != kNoPosition) {
        m_selected = session.users().nameAt(pre);
    }
}

ScreenMessage UsersForm::addRefusal() {
    return {"Could not add the user.  Make sure you are not inputting a duplicate name.",
            "New User", MessageKind::Warning};
}

ScreenMessage UsersForm::renameRefusal() {
    return {"Could not rename the user.  Make sure you are not inputting a duplicate name.",
            "Rename User", MessageKind::Warning};
}

ScreenMessage UsersForm::deleteRefusal() {
    return {"Could not delete the user.", "Delete User", MessageKind::Warning};
}

UsersView UsersForm::view() const {
    const UserList& users = m_session->users();
    UsersView v;
    for (std::size_t i = 0; i < users.count(); ++i) {
        v.names.emplace_back(users.nameAt(static_cast<Position>(i)));
        if (v.names.back() == m_selected) {
            v.selected = static_cast<int>(i);
        }
    }
    if (v.selected < 0 && !v.names.empty()) {
        v.selected = 0;
    }
    return v;
}

Outcome UsersForm::edit(Field field, std::string_view text) {
    if (field == Field::Selected) {
        m_selected = text;
    } else {
        m_newName = text;
    }
    return {};
}

std::optional<ScreenMessage> UsersForm::confirmation(Command id) const {
    if (id != Command::Delete || m_session->users().find(m_selected) == kNoPosition) {
        return std::nullopt;
    }
    return ScreenMessage{"Delete the user name and ALL ASSOCIATED DATA of '" + m_selected + "'?",
                         "Delete User", MessageKind::Question};
}

Outcome UsersForm::command(Command id) {
    switch (id) {
        case Command::Open:
            if (m_session->users().find(m_selected) != kNoPosition &&
                m_selected != m_session->openUserName()) {
                const SessionStatus status = m_session->switchUser(m_selected);
                // After a failure the list shows who is open.
                m_selected = m_session->openUserName();
                return {.notices = kUserChanged, .message = status.warning()};
            }
            return {};
        case Command::Add:
            return add();
        case Command::Delete:
            return remove();
        case Command::Rename:
            return rename();
    }
    return {};
}

Outcome UsersForm::add() {
    // Refused: a duplicate, a name that cannot be a folder, or one the list could not take.
    const std::string name = m_newName;
    if (m_session->users().find(name) != kNoPosition) {
        return {.message = addRefusal()};
    }
    const SessionStatus status = m_session->addUser(name);
    if (m_session->users().find(name) == kNoPosition) {
        return {.message = addRefusal()};
    }
    m_selected = name;
    return {.notices = kUserChanged, .message = status.warning()};
}

Outcome UsersForm::remove() {
    const std::string name = m_selected;
    if (m_session->users().find(name) == kNoPosition) {
        return {};
    }
    const SessionStatus status = m_session->deleteUser(name);
    // The session opens another user itself (a new "Zerbu" when nobody is left); a failure with
    // the name still listed means the deletion itself was refused.
    const bool refused = !status.ok() && m_session->users().find(name) != kNoPosition;
    m_selected = m_session->openUserName();
    return {.notices = kUserChanged, .message = refused ? deleteRefusal() : status.warning()};
}

Outcome UsersForm::rename() {
    const std::string name = m_selected;
    if (m_session->users().find(name) == kNoPosition) {
        return {};
    }
    // The session moves the folder and saves the open user at once.
    const SessionStatus status = m_session->renameUser(name, m_newName);
    if (m_session->users().find(name) != kNoPosition) {
        return {.message = renameRefusal()};
    }
    m_selected = m_newName;
    return {.notices = kUserChanged, .message = status.warning()};
}

}  // namespace nutrovex
