#include "render/GuiApplication.h"

#include <QGuiApplication>
#include <cstdio>
#include <memory>

namespace nutrovex {

void ensureGuiApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Qt's notes about the missing desktop session are not the command's business.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    static int argc = 1;
    static char name[] = "nutrovex-tool";
    static char* argv[] = {name, nullptr};
    static const auto app = std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace nutrovex
