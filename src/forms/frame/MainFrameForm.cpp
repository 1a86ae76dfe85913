#include "forms/frame/MainFrameForm.h"

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

ScreenMessage MainFrameForm::loadError() {
    return {"Error loading data files. Please reinstall Nutrovex.", "Registry Error",
            MessageKind::Critical};
}

ScreenMessage MainFrameForm::quitUnsaved(const SessionStatus& failure) {
    return {
        "Your changes could not be saved:\n" + failure.message() + "\n\nQuit anyway and lose them?",
        "Save User", MessageKind::Question};
}

MainFrameView MainFrameForm::view() const {
    return {windowTitle(m_session->openUserName()), m_session->userOpen()};
}

Outcome MainFrameForm::command(Command id) {
    const SessionStatus status =
        id == Command::Load ? m_session->initialLoad() : m_session->saveAll();
    // Everything shown is read again: the user, or the files just written.
    return {.notices = {.userChanged = true}, .message = status.warning()};
}

}  // namespace nutrovex
