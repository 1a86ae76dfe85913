#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"

namespace nutrovex {

// The help texts, by their string ids. The BMR text is two strings shown one after the other.
inline constexpr uint16_t kQuickHelpText = 61446;
inline constexpr uint16_t kHealthyDietingText = 61191;
inline constexpr uint16_t kBmrText = 59142;
inline constexpr uint16_t kBmrFactorsText = 59143;
inline constexpr uint16_t kDisclaimerText = 61192;
inline constexpr uint16_t kSafeLossText = 57682;

// Every help text id, in the order the help screen offers them.
[[nodiscard]] std::span<const uint16_t> allHelpTexts();

// What the help screen shows: the texts of one topic, joined without a separator.
struct HelpView {
    std::span<const uint16_t> texts;
    std::string text;
};

// The help screen: a read-only text box showing one topic, chosen by buttons and menu commands.
// It opens on the quick help every time, whatever was shown before.
class HelpForm {
public:
    // Loads one text by its id (the program's resources; tests give their own).
    using TextSource = std::function<std::string(uint16_t id)>;

    // The buttons under the text box and the entries of the screen's menu.
    enum class Command : uint16_t {
        DietingButton = 1301,
        BmrButton = 1302,
        DisclaimerButton = 1303,
        QuickHelp = 32964,
        HealthyDieting = 32939,
        Bmr = 32954,
        Disclaimer = 32953,
        Warning = 32948,
        SafeLoss = 32966,
    };
    struct Entry {
        Command command;
        std::string_view caption;
    };

    explicit HelpForm(TextSource source);

    // The texts a command shows, joined in this order; empty for a command that is not the help
    // screen's.
    [[nodiscard]] static std::span<const uint16_t> textsFor(Command command);
    // The buttons under the text box and the entries of the screen's menu, in their order.
    [[nodiscard]] static std::span<const Entry> buttons();
    [[nodiscard]] static std::span<const Entry> menuCommands();

    [[nodiscard]] const HelpView& view() const { return m_view; }
    // Clears the text box and shows the command's texts, loaded again; a command that shows no
    // text changes nothing.
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    TextSource m_source;
    HelpView m_view;
};

}  // namespace nutrovex
