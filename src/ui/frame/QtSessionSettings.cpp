#include "ui/frame/QtSessionSettings.h"

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

const QString kNameKey = QStringLiteral("CurrentUser/Name");

}  // namespace

std::unique_ptr<QSettings> openProgramSettings(const DataRootChoice& root) {
    if (root.given) {
        const QString file = QString::fromStdString((root.path / "Nutrovex.ini").string());
        return std::make_unique<QSettings>(file, QSettings::IniFormat);
    }
    return std::make_unique<QSettings>(QStringLiteral("Zerbu"), QStringLiteral("Nutrovex"));
}

QtSessionSettings::QtSessionSettings(const DataRootChoice& root)
    : m_settings(openProgramSettings(root)) {}

std::string QtSessionSettings::currentUserName() const {
    return fromQString(m_settings->value(kNameKey).toString()).value_or(std::string());
}

void QtSessionSettings::setCurrentUserName(std::string_view name) {
    m_settings->setValue(kNameKey, toQString(name));
    m_settings->sync();
}

}  // namespace nutrovex
