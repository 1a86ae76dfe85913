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

SessionStatus openRememberedUser(Session& session, std::string_view rememberedView) {
    const std::string remembered(rememberedView);
    SessionStatus status;
    if (remembered.empty() || !session.userOpen() || session.openUserName() == remembered ||
        session.users().find(remembered) == kNoPosition) {
        return status;
    }
    const std::string fallback(session.openUserName());
    status = session.switchUser(remembered);
    if (!status) {
        // The remembered user cannot be read: back to the default one, and say why.
        for (std::string& f : session.switchUser(fallback).failures) {
            status.add(std::move(f));
        }
    }
    return status;
}

SessionStatus deleteUserKeepingOneOpen(Session& session, std::string_view nameView, bool& refused) {
    const std::string name(nameView);
    SessionStatus status = session.deleteUser(name);
    refused = !status.ok();
    if (refused || session.userOpen()) {
        return status;
    }
    const Position next = session.preselectedUser();
    if (next == kNoPosition) {
        return session.addUser(kDefaultUserName);
    }
    return session.switchUser(std::string(session.users().nameAt(next)));
}

}  // namespace nutrovex
