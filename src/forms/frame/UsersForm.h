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
        NewName,   // the name typed for New... or Rename...
    };
    enum class Command : uint8_t {
        Open,    // OK: opens the selected user when another one is open
        Add,     // New...: adds NewName and opens it; refused with addRefusal()
        Delete,  // after confirmation(Delete): refused with deleteRefusal()
        Rename,  // the selected user becomes NewName; refused with renameRefusal()
    };

    [[nodiscard]] static ScreenMessage addRefusal();
    [[nodiscard]] static ScreenMessage renameRefusal();
    [[nodiscard]] static ScreenMessage deleteRefusal();

    [[nodiscard]] UsersView view() const;
    [[nodiscard]] const std::string& selectedName() const { return m_selected; }
    Outcome edit(Field field, std::string_view text);
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
    std::string m_newName;
};

}  // namespace nutrovex
