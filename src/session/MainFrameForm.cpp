#include "session/MainFrameForm.h"

#include <array>

#include "session/Session.h"

namespace nutrovex {

namespace {

constexpr std::array<MainMenuStep, 4> kSteps{{
    {1305, kHealthyDietingStep, "Step &1", "Healthy Dieting", "&Healthy Dieting",
     "Show Healthy Dieting"},
    {1306, kPersonalInformationStep, "Step &2", "Personal Information", "&Personal Information",
     "Show/Edit Personal Info"},
    {1307, kSetGoalsStep, "Step &3", "Set Goals", "Set &Goals", "View/Enter Goals"},
    {1308, kLogbookStep, "Step &4", "Logbook", "&Logbook", "View Logbook"},
}};

}  // namespace

std::span<const MainMenuStep> MainFrameForm::steps() {
    return kSteps;
}

std::string MainFrameForm::windowTitle(std::string_view userName) {
    if (userName.empty()) {
        return "Nutrovex";
    }
    return "Nutrovex - " + std::string(userName);
}

ScreenMessage MainFrameForm::quitUnsaved(const SessionStatus& failure) {
    return {
        "Your changes could not be saved:\n" + failure.message() + "\n\nQuit anyway and lose them?",
        "Save User", MessageKind::Question};
}

SessionStatus deleteUserKeepingOneOpen(Session& session, std::string_view nameView, bool& refused) {
    const std::string name(nameView);
    const bool listed = session.users().find(name) != kNoPosition;
    SessionStatus status = session.deleteUser(name);
    // The session opens another user itself (a new "Zerbu" when nobody is left); a failure with
    // the name still listed means the deletion itself was refused.
    refused = !listed || (!status.ok() && session.users().find(name) != kNoPosition);
    return status;
}

}  // namespace nutrovex
