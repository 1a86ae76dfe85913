#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "core/HelpForm.h"

namespace nutrovex {
namespace {

// Each text is its id in brackets, so a join shows exactly which strings went in and how.
std::string bracketed(uint16_t id) {
    return "[" + std::to_string(id) + "]";
}

std::vector<uint16_t> ids(std::span<const uint16_t> texts) {
    return {texts.begin(), texts.end()};
}

TEST(HelpForm, EachCommandShowsItsTextsJoinedWithoutASeparator) {
    struct Case {
        uint16_t command;
        std::vector<uint16_t> texts;
        std::string shown;
    };
    const std::vector<Case> cases = {
        {kQuickHelpCommand, {61446}, "[61446]"},
        {kHelpDietingButton, {61191}, "[61191]"},
        {kHealthyDietingCommand, {61191}, "[61191]"},
        {kHelpBmrButton, {59142, 59143}, "[59142][59143]"},
        {kBmrCommand, {59142, 59143}, "[59142][59143]"},
        {kHelpDisclaimerButton, {61192}, "[61192]"},
        {kDisclaimerCommand, {61192}, "[61192]"},
        {kWarningCommand, {57682}, "[57682]"},
        {kSafeLossCommand, {57682}, "[57682]"},
    };
    HelpForm form(bracketed);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        EXPECT_EQ(ids(HelpForm::textsFor(c.command)), c.texts);
        // Starting from the BMR text, so that a command that fails to clear the box shows up.
        ASSERT_TRUE(form.run(kBmrCommand));
        ASSERT_TRUE(form.run(c.command));
        EXPECT_EQ(ids(form.shownTexts()), c.texts);
        EXPECT_EQ(form.text(), c.shown);
    }
}

TEST(HelpForm, OpensOnTheQuickHelpWhateverWasShownLastTime) {
    HelpForm first(bracketed);
    EXPECT_EQ(first.text(), "[61446]");
    ASSERT_TRUE(first.run(kHelpDisclaimerButton));

    const HelpForm again(bracketed);
    EXPECT_EQ(ids(again.shownTexts()), std::vector<uint16_t>{kQuickHelpText});
    EXPECT_EQ(again.text(), "[61446]");
}

TEST(HelpForm, CommandsOfOtherScreensLeaveTheTextAlone) {
    HelpForm form(bracketed);
    ASSERT_TRUE(form.run(kBmrCommand));
    for (const uint16_t other : {uint16_t{0}, uint16_t{1}, uint16_t{1309}, uint16_t{32940},
                                 uint16_t{32852}, uint16_t{0xFFFF}}) {
        SCOPED_TRACE(other);
        EXPECT_TRUE(HelpForm::textsFor(other).empty());
        EXPECT_FALSE(form.run(other));
        EXPECT_EQ(form.text(), "[59142][59143]");
    }
}

TEST(HelpForm, TextsAreLoadedAgainOnEveryCommand) {
    int loads = 0;
    HelpForm form([&loads](uint16_t id) {
        ++loads;
        return bracketed(id) + std::to_string(loads);
    });
    ASSERT_TRUE(form.run(kBmrCommand));
    EXPECT_EQ(form.text(), "[59142]2[59143]3");
    ASSERT_TRUE(form.run(kBmrCommand));
    EXPECT_EQ(form.text(), "[59142]4[59143]5");
}

TEST(HelpForm, EveryTextIsReachableFromTheMenuAndEveryButtonShowsOne) {
    std::set<uint16_t> reached;
    for (const HelpCommand& entry : HelpForm::menuCommands()) {
        SCOPED_TRACE(entry.caption);
        const auto texts = HelpForm::textsFor(entry.command);
        EXPECT_FALSE(texts.empty());
        reached.insert(texts.begin(), texts.end());
    }
    EXPECT_EQ(reached, std::set<uint16_t>(allHelpTexts().begin(), allHelpTexts().end()));
    EXPECT_EQ(allHelpTexts().size(), 6u);

    for (const HelpCommand& button : HelpForm::buttons()) {
        SCOPED_TRACE(button.caption);
        const auto texts = HelpForm::textsFor(button.command);
        ASSERT_FALSE(texts.empty());
        // A button shows the same topic as the menu entry of the same subject.
        const auto sameTopic =
            std::ranges::find_if(HelpForm::menuCommands(), [&](const HelpCommand& m) {
                return std::ranges::equal(HelpForm::textsFor(m.command), texts);
            });
        EXPECT_NE(sameTopic, HelpForm::menuCommands().end());
    }
}

}  // namespace
}  // namespace nutrovex
