#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace nutrovex {

// The icon of a message box: refusals warn, confirmations ask, fatal load errors stop.
enum class MessageKind : uint8_t { Warning, Question, Critical };

// A message box as data: a screen shows it; for a Question the operation runs only on Yes.
struct ScreenMessage {
    std::string text;
    std::string caption;
    MessageKind kind = MessageKind::Warning;

    friend bool operator==(const ScreenMessage&, const ScreenMessage&) = default;
};

// What an engine command changed, for the session to apply: it marks the user's data or the
// catalogue modified (they are saved at the next save point) and tells every open screen to redraw
// (data changed), that a day was created by typing into it, that the personal information was
// reset, or that another user is open. Commands never mark anything modified themselves.
struct Notices {
    bool userData = false;   // the user's data must be saved
    bool catalogue = false;  // the catalogue must be saved
    bool dataChanged = false;
    bool dayCreated = false;
    bool personalInfoReset = false;
    bool userChanged = false;
    bool recipes = false;  // the person's recipes (Recipes.json) must be saved
    bool targets = false;  // the person's targets (Targets.json) must be saved

    [[nodiscard]] bool any() const {
        return userData || catalogue || dataChanged || dayCreated || personalInfoReset ||
               userChanged || recipes || targets;
    }
    Notices& operator|=(const Notices& other) {
        userData = userData || other.userData;
        catalogue = catalogue || other.catalogue;
        dataChanged = dataChanged || other.dataChanged;
        dayCreated = dayCreated || other.dayCreated;
        personalInfoReset = personalInfoReset || other.personalInfoReset;
        userChanged = userChanged || other.userChanged;
        recipes = recipes || other.recipes;
        targets = targets || other.targets;
        return *this;
    }
    friend bool operator==(const Notices&, const Notices&) = default;
};

// What a screen has written when it closes, or at once after a change: nothing, the user's data,
// the catalogue, or both (the user's data first). Each is written only when it was changed since
// it was last saved, so a screen in which nothing changed writes nothing.
enum class SavePoint : uint8_t { Nothing, UserData, Catalogue, Both };

// What a command did: what it changed, what is to be written now (the screens that save every
// change), and the message a screen shows when the command was refused or could not do all of it.
struct Outcome {
    Notices notices{};
    std::optional<ScreenMessage> message{};
    SavePoint save = SavePoint::Nothing;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

}  // namespace nutrovex
