#include "core/HelpForm.h"

#include <array>
#include <utility>

namespace nutrovex {
namespace {

constexpr std::array<uint16_t, 1> kQuickHelp{kQuickHelpText};
constexpr std::array<uint16_t, 1> kDieting{kHealthyDietingText};
constexpr std::array<uint16_t, 2> kBmr{kBmrText, kBmrFactorsText};
constexpr std::array<uint16_t, 1> kDisclaimer{kDisclaimerText};
constexpr std::array<uint16_t, 1> kSafeLoss{kSafeLossText};

constexpr std::array<uint16_t, 6> kAll{kQuickHelpText,  kHealthyDietingText, kBmrText,
                                       kBmrFactorsText, kDisclaimerText,     kSafeLossText};

constexpr std::array<HelpCommand, 3> kButtons{{
    {kHelpDietingButton, "Dieting"},
    {kHelpBmrButton, "BMR"},
    {kHelpDisclaimerButton, "Disclaimer"},
}};

constexpr std::array<HelpCommand, 5> kMenu{{
    {kQuickHelpCommand, "Quick Help"},
    {kHealthyDietingCommand, "Healthy Dieting"},
    {kBmrCommand, "Basal Metabolic Rate (BMR)"},
    {kDisclaimerCommand, "Disclaimer"},
    {kWarningCommand, "Warning"},
}};

}  // namespace

std::span<const uint16_t> allHelpTexts() {
    return kAll;
}

HelpForm::HelpForm(TextSource source) : m_source(std::move(source)) {
    run(kQuickHelpCommand);
}

std::span<const uint16_t> HelpForm::textsFor(uint16_t command) {
    switch (command) {
        case kQuickHelpCommand:
            return kQuickHelp;
        case kHelpDietingButton:
        case kHealthyDietingCommand:
            return kDieting;
        case kHelpBmrButton:
        case kBmrCommand:
            return kBmr;
        case kHelpDisclaimerButton:
        case kDisclaimerCommand:
            return kDisclaimer;
        case kWarningCommand:
        case kSafeLossCommand:
            return kSafeLoss;
        default:
            return {};
    }
}

std::span<const HelpCommand> HelpForm::buttons() {
    return kButtons;
}
std::span<const HelpCommand> HelpForm::menuCommands() {
    return kMenu;
}

bool HelpForm::run(uint16_t command) {
    const std::span<const uint16_t> texts = textsFor(command);
    if (texts.empty()) {
        return false;
    }
    m_shown = texts;
    m_text.clear();
    for (const uint16_t id : texts) {
        m_text += m_source(id);
    }
    return true;
}

}  // namespace nutrovex
