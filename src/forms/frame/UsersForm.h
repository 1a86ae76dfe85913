#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ScreenMessage.h"

namespace nutrovex {

class Session;

struct UsersView {
    std::vector<std::string> names;  // as listed
    int selected = -1;               // the selected row; -1 while the list is empty
};

// The users screen: pick the user to open, add, delete and rename users. The commands act on the
// selected entry, the one the list shows selected; the session's user operations do the work and
// save what they must at once.
class UsersForm {
public:
    // Selects the remembered user (ignoring case), else the first.
    explicit UsersForm(Session& session);

    enum class Field : uint8_t {
        Selected,  // the name of the entry the list shows selected
        NewName,   // the name typed for New... or Rename...; nullopt when the files cannot hold it
    };
    enum class Command : uint8_t {
        Open,    // OK: opens the selected user when another one is open
        Add,     // New...: adds NewName and opens it; refused with addRefusal()
        Delete,  // after confirmation(Delete): refused with deleteRefusal()
        Rename,  // the selected user becomes NewName; refused with renameRefusal()
    };

    // Why New... or Rename... was refused for the name typed: a name that cannot be a user's
    // folder says why, and so does nullopt (a name Windows-1252 cannot hold); any other name gets
    // the duplicate-name text.
    [[nodiscard]] static ScreenMessage addRefusal(const std::optional<std::string>& name);
    [[nodiscard]] static ScreenMessage renameRefusal(const std::optional<std::string>& newName);
    [[nodiscard]] static ScreenMessage deleteRefusal();
    // "Delete the user name and ALL ASSOCIATED DATA of 'NAME'?", the name quoted safely.
    [[nodiscard]] static ScreenMessage confirmDelete(std::string_view name);

    [[nodiscard]] UsersView view() const;
    [[nodiscard]] const std::string& selectedName() const { return m_selected; }
    // text: as the files hold it; nullopt for a typed name with a character they cannot hold.
    Outcome edit(Field field, const std::optional<std::string>& text);
    // The question before Delete; none for the other commands or without a selection.
    [[nodiscard]] std::optional<ScreenMessage> confirmation(Command id) const;
    // A refused command changes nothing and its outcome carries the refusal; once a user
    // operation ran, the outcome announces the change and carries its failure, if any.
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    Outcome add();
    Outcome remove();
    Outcome rename();

    Session* m_session;
    std::string m_selected;
    std::optional<std::string> m_newName;
};

}  // namespace nutrovex
