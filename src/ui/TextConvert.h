#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace nutrovex {

// The one place where stored Windows-1252 text meets Qt's strings.
[[nodiscard]] QString toQString(std::string_view cp1252);
// nullopt when the text holds a character that cannot be stored.
[[nodiscard]] std::optional<std::string> fromQString(const QString& text);

}  // namespace nutrovex
