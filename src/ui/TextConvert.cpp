#include "ui/TextConvert.h"

#include "core/Cp1252.h"

namespace nutrovex {

QString toQString(std::string_view cp1252) {
    return QString::fromStdString(cp1252ToUtf8(cp1252));
}

std::optional<std::string> fromQString(const QString& text) {
    return utf8ToCp1252(text.toStdString());
}

}  // namespace nutrovex
