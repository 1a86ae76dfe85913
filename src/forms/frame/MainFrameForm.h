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

struct MainFrameView {
    std::string title;  // "Nutrovex - Ann": the open user in the window's title
    bool userOpen = false;
};

// The main window and its main menu: the steps, the commands of its menu bar, and what happens
// when the program starts and ends.
class MainFrameForm {
public:
    explicit MainFrameForm(Session& session) : m_session(&session) {}

    enum class Command : uint8_t {
        // The start-up load: the remembered user, or "Zerbu". Failures are the outcome's message.
        Load,
        // "Save User": the user's data, then the catalogue, whether they changed or not.
        SaveUser,
    };

    [[nodiscard]] static std::span<const MainMenuStep> steps();
    [[nodiscard]] static std::string aboutPrompt() { return "About"; }
    [[nodiscard]] static std::string saveUserPrompt() { return "Saves the current User"; }
    [[nodiscard]] static std::string usersPrompt() { return "Choose, add, rename or delete users"; }
    [[nodiscard]] static std::string quitPrompt() { return "Saves and quits Nutrovex"; }
    [[nodiscard]] static std::string windowTitle(std::string_view userName);
    // "Error loading data files. ...": the start-up load could open no user at all.
    [[nodiscard]] static ScreenMessage loadError();
    // Closing with changes that could not be saved: quit anyway on Yes.
    [[nodiscard]] static ScreenMessage quitUnsaved(const SessionStatus& failure);

    [[nodiscard]] MainFrameView view() const;
    Outcome command(Command id);
    // Closing the window writes whatever is not saved yet.
    [[nodiscard]] SavePoint close() const { return SavePoint::Both; }

private:
    Session* m_session;
};

}  // namespace nutrovex
