#pragma once

#include <QDir>
#include <QString>
#include <QWidget>

namespace nutrovex::test {

// Saves a picture of the widget as NAME.png into $NUTROVEX_SCREENSHOT_DIR when that is set, so
// a person can look at what the screens show. Returns the path written, or an empty string.
inline QString saveScreenshot(QWidget& widget, const QString& name) {
    const QString dir = qEnvironmentVariable("NUTROVEX_SCREENSHOT_DIR");
    if (dir.isEmpty()) {
        return {};
    }
    QDir().mkpath(dir);
    const QString path = QDir(dir).filePath(name + QStringLiteral(".png"));
    return widget.grab().save(path) ? path : QString();
}

}  // namespace nutrovex::test
