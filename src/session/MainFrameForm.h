#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"
#include "session/SessionStatus.h"

namespace nutrovex {

class Session;

// One of the main menu's four steps: its button, the label beside it, its "View" menu entry and
// the prompt that entry shows.
struct MainMenuStep {
    uint16_t button;
    uint16_t command;
    std::string_view buttonText;  // with its mnemonic
    std::string_view label;
    std::string_view menuText;
    std::string_view prompt;
};

inline constexpr uint16_t kHealthyDietingStep = 32939;
inline constexpr uint16_t kPersonalInformationStep = 32940;
inline constexpr uint16_t kSetGoalsStep = 32941;
inline constexpr uint16_t kLogbookStep = 32852;

// The main window and its main menu: the steps, the commands of its menu bar, and what happens
// when the program starts, ends, or loses its open user.
struct MainFrameForm {
    [[nodiscard]] static std::span<const MainMenuStep> steps();
    [[nodiscard]] static std::string aboutPrompt() { return "About"; }
    [[nodiscard]] static std::string saveUserPrompt() { return "Saves the current User"; }
    [[nodiscard]] static std::string usersPrompt() { return "Choose, add, rename or delete users"; }
    // "Nutrovex - Ann": the open user in the window's title.
    [[nodiscard]] static std::string windowTitle(std::string_view userName);
    // Closing with changes that could not be saved: quit anyway on Yes.
    [[nodiscard]] static ScreenMessage quitUnsaved(const SessionStatus& failure);
};

// Deletes a user; when that was the open user, the session opens the first listed user, or makes
// "Zerbu" again when nobody is left, so that a user is always open.
// refused: the deletion itself failed (the screen shows its refusal).
SessionStatus deleteUserKeepingOneOpen(Session& session, std::string_view name, bool& refused);

}  // namespace nutrovex
