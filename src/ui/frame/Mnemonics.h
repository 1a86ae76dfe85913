#pragma once

#include <QString>

namespace nutrovex {

// The text with a mnemonic on its first letter not yet in used (which collects it); the text
// unchanged when it already has one or no letter is free.
[[nodiscard]] QString withMnemonic(const QString& text, QString& used);

}  // namespace nutrovex
