#include "forms/frame/UsersForm.h"

#include "core/Cp1252.h"
#include "session/Session.h"
#include "storage/DataRoot.h"

namespace nutrovex {

namespace {

constexpr Notices kUserChanged{.userChanged = true};

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

UsersForm::UsersForm(Session& session) : m_session(&session) {
    const Position pre = session.preselectedUser();
    if (pre != kNoPosition) {
        m_selected = session.users().nameAt(pre);
    }
}

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

Outcome UsersForm::edit(Field field, const std::optional<std::string>& text) {
    if (field == Field::Selected) {
        m_selected = text.value_or(std::string());
    } else {
        m_newName = text;
    }
    return {};
}

std::optional<ScreenMessage> UsersForm::confirmation(Command id) const {
    if (id != Command::Delete || m_session->users().find(m_selected) == kNoPosition) {
        return std::nullopt;
    }
    return confirmDelete(m_selected);
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
    if (!m_newName || m_session->users().find(*m_newName) != kNoPosition) {
        return {.message = addRefusal(m_newName)};
    }
    const std::string name = *m_newName;
    const SessionStatus status = m_session->addUser(name);
    if (m_session->users().find(name) == kNoPosition) {
        return {.message = addRefusal(m_newName)};
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
    if (!m_newName) {
        return {.message = renameRefusal(m_newName)};
    }
    // The session moves the folder and saves the open user at once.
    const SessionStatus status = m_session->renameUser(name, *m_newName);
    if (m_session->users().find(name) != kNoPosition) {
        return {.message = renameRefusal(m_newName)};
    }
    m_selected = *m_newName;
    return {.notices = kUserChanged, .message = status.warning()};
}

}  // namespace nutrovex
