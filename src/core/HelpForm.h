#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

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

// The help screen's buttons and menu commands.
inline constexpr uint16_t kHelpDietingButton = 1301;
inline constexpr uint16_t kHelpBmrButton = 1302;
inline constexpr uint16_t kHelpDisclaimerButton = 1303;
inline constexpr uint16_t kQuickHelpCommand = 32964;
inline constexpr uint16_t kHealthyDietingCommand = 32939;
inline constexpr uint16_t kBmrCommand = 32954;
inline constexpr uint16_t kDisclaimerCommand = 32953;
inline constexpr uint16_t kWarningCommand = 32948;
inline constexpr uint16_t kSafeLossCommand = 32966;

struct HelpCommand {
    uint16_t command;
    std::string_view caption;
};

// The help screen: a read-only text box showing one topic, chosen by buttons and menu commands.
// It opens on the quick help every time, whatever was shown before.
class HelpForm {
public:
    // Loads one text by its id (the program's resources; tests give their own).
    using TextSource = std::function<std::string(uint16_t id)>;

    explicit HelpForm(TextSource source);

    // The texts a command shows, joined in this order; empty for a command that is not the help
    // screen's.
    [[nodiscard]] static std::span<const uint16_t> textsFor(uint16_t command);
    // The buttons under the text box and the entries of the screen's menu, in their order.
    [[nodiscard]] static std::span<const HelpCommand> buttons();
    [[nodiscard]] static std::span<const HelpCommand> menuCommands();

    // Clears the text box and shows the command's texts; false (nothing changes) for a command
    // that shows no text.
    bool run(uint16_t command);

    [[nodiscard]] std::span<const uint16_t> shownTexts() const { return m_shown; }
    // The text box's contents: the shown strings joined without a separator.
    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    TextSource m_source;
    std::span<const uint16_t> m_shown;
    std::string m_text;
};

}  // namespace nutrovex
