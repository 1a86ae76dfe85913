#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "forms/frame/HelpForm.h"

namespace nutrovex {
namespace {

using Command = HelpForm::Command;

// Each text is its id in brackets, so a join shows exactly which strings went in and how.
std::string bracketed(uint16_t id) {
    return "[" + std::to_string(id) + "]";
}

std::vector<uint16_t> ids(std::span<const uint16_t> texts) {
    return {texts.begin(), texts.end()};
}

TEST(HelpForm, EachCommandShowsItsTextsJoinedWithoutASeparator) {
    struct Case {
        Command command;
        std::vector<uint16_t> texts;
        std::string shown;
    };
    const std::vector<Case> cases = {
        {Command::QuickHelp, {61446}, "[61446]"},
        {Command::DietingButton, {61191}, "[61191]"},
        {Command::HealthyDieting, {61191}, "[61191]"},
        {Command::BmrButton, {59142, 59143}, "[59142][59143]"},
        {Command::Bmr, {59142, 59143}, "[59142][59143]"},
        {Command::DisclaimerButton, {61192}, "[61192]"},
        {Command::Disclaimer, {61192}, "[61192]"},
        {Command::Warning, {57682}, "[57682]"},
        {Command::SafeLoss, {57682}, "[57682]"},
    };
    HelpForm form(bracketed);
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.command));
        EXPECT_EQ(ids(HelpForm::textsFor(c.command)), c.texts);
        // Starting from the BMR text, so that a command that fails to clear the box shows up.
        (void)form.command(Command::Bmr);
        EXPECT_FALSE(form.command(c.command).notices.any());
        EXPECT_EQ(ids(form.view().texts), c.texts);
        EXPECT_EQ(form.view().text, c.shown);
    }
}

TEST(HelpForm, OpensOnTheQuickHelpWhateverWasShownLastTime) {
    HelpForm first(bracketed);
    EXPECT_EQ(first.view().text, "[61446]");
    (void)first.command(Command::DisclaimerButton);

    const HelpForm again(bracketed);
    EXPECT_EQ(ids(again.view().texts), std::vector<uint16_t>{kQuickHelpText});
    EXPECT_EQ(again.view().text, "[61446]");
}

TEST(HelpForm, CommandsOfOtherScreensLeaveTheTextAlone) {
    HelpForm form(bracketed);
    (void)form.command(Command::Bmr);
    for (const uint16_t other : {uint16_t{0}, uint16_t{1}, uint16_t{1309}, uint16_t{32940},
                                 uint16_t{32852}, uint16_t{0xFFFF}}) {
        SCOPED_TRACE(other);
        EXPECT_TRUE(HelpForm::textsFor(static_cast<Command>(other)).empty());
        (void)form.command(static_cast<Command>(other));
        EXPECT_EQ(form.view().text, "[59142][59143]");
    }
}

TEST(HelpForm, TextsAreLoadedAgainOnEveryCommand) {
    int loads = 0;
    HelpForm form([&loads](uint16_t id) {
        ++loads;
        return bracketed(id) + std::to_string(loads);
    });
    (void)form.command(Command::Bmr);
    EXPECT_EQ(form.view().text, "[59142]2[59143]3");
    (void)form.command(Command::Bmr);
    EXPECT_EQ(form.view().text, "[59142]4[59143]5");
}

TEST(HelpForm, EveryTextIsReachableFromTheMenuAndEveryButtonShowsOne) {
    std::set<uint16_t> reached;
    for (const HelpForm::Entry& entry : HelpForm::menuCommands()) {
        SCOPED_TRACE(entry.caption);
        const auto texts = HelpForm::textsFor(entry.command);
        EXPECT_FALSE(texts.empty());
        reached.insert(texts.begin(), texts.end());
    }
    EXPECT_EQ(reached, std::set<uint16_t>(allHelpTexts().begin(), allHelpTexts().end()));
    EXPECT_EQ(allHelpTexts().size(), 6u);

    for (const HelpForm::Entry& button : HelpForm::buttons()) {
        SCOPED_TRACE(button.caption);
        const auto texts = HelpForm::textsFor(button.command);
        ASSERT_FALSE(texts.empty());
        // A button shows the same topic as the menu entry of the same subject.
        const auto sameTopic =
            std::ranges::find_if(HelpForm::menuCommands(), [&](const HelpForm::Entry& m) {
                return std::ranges::equal(HelpForm::textsFor(m.command), texts);
            });
        EXPECT_NE(sameTopic, HelpForm::menuCommands().end());
    }
}

}  // namespace
}  // namespace nutrovex
