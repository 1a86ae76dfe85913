#include "forms/frame/HelpForm.h"

#include <array>
#include <utility>

namespace nutrovex {
namespace {

using Command = HelpForm::Command;

constexpr std::array<uint16_t, 1> kQuickHelp{kQuickHelpText};
constexpr std::array<uint16_t, 1> kDieting{kHealthyDietingText};
constexpr std::array<uint16_t, 2> kBmr{kBmrText, kBmrFactorsText};
constexpr std::array<uint16_t, 1> kDisclaimer{kDisclaimerText};
constexpr std::array<uint16_t, 1> kSafeLoss{kSafeLossText};

constexpr std::array<uint16_t, 6> kAll{kQuickHelpText,  kHealthyDietingText, kBmrText,
                                       kBmrFactorsText, kDisclaimerText,     kSafeLossText};

constexpr std::array<HelpForm::Entry, 3> kButtons{{
    {Command::DietingButton, "Dieting"},
    {Command::BmrButton, "BMR"},
    {Command::DisclaimerButton, "Disclaimer"},
}};

constexpr std::array<HelpForm::Entry, 5> kMenu{{
    {Command::QuickHelp, "Quick Help"},
    {Command::HealthyDieting, "Healthy Dieting"},
    {Command::Bmr, "Basal Metabolic Rate (BMR)"},
    {Command::Disclaimer, "Disclaimer"},
    {Command::Warning, "Warning"},
}};

}  // namespace

std::span<const uint16_t> allHelpTexts() {
    return kAll;
}

HelpForm::HelpForm(TextSource source) : m_source(std::move(source)) {
    (void)command(Command::QuickHelp);
}

std::span<const uint16_t> HelpForm::textsFor(Command command) {
    switch (command) {
        case Command::QuickHelp:
            return kQuickHelp;
        case Command::DietingButton:
        case Command::HealthyDieting:
            return kDieting;
        case Command::BmrButton:
        case Command::Bmr:
            return kBmr;
        case Command::DisclaimerButton:
        case Command::Disclaimer:
            return kDisclaimer;
        case Command::Warning:
        case Command::SafeLoss:
            return kSafeLoss;
    }
    return {};
}

std::span<const HelpForm::Entry> HelpForm::buttons() {
    return kButtons;
}

std::span<const HelpForm::Entry> HelpForm::menuCommands() {
    return kMenu;
}

Outcome HelpForm::command(Command id) {
    const std::span<const uint16_t> texts = textsFor(id);
    if (texts.empty()) {
        return {};
    }
    m_view.texts = texts;
    m_view.text.clear();
    for (const uint16_t text : texts) {
        m_view.text += m_source(text);
    }
    return {};
}

}  // namespace nutrovex
