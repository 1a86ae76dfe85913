#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>

#include <cstdio>
#include <string_view>

#include "data/ShippedCatalogue.h"
#include "session/Session.h"
#include "storage/CatalogueStorage.h"
#include "storage/FileIo.h"
#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/frame/QtSessionSettings.h"

using namespace nutrovex;

int main(int argc, char** argv) {
    tuneHeapForLargeLoads();
    // The version answers without a display, as on a server or in a package check.
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--version") {
            std::printf("Nutrovex %s\n", NUTROVEX_VERSION);
            return 0;
        }
    }
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Zerbu"));
    QApplication::setApplicationName(QStringLiteral("Nutrovex"));
    QApplication::setApplicationVersion(QStringLiteral(NUTROVEX_VERSION));
    QApplication::setWindowIcon(applicationIcon());

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Nutrovex, a nutrition and fitness logbook"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption rootOption(
        QStringLiteral("root"), QStringLiteral("Keep the data in <dir>."), QStringLiteral("dir"));
    parser.addOption(rootOption);
    parser.process(app);

    const DataRootChoice root = chooseDataRoot(parser.value(rootOption).toStdString());
    const SystemClock clock;
    QtSessionSettings settings(root);
    const std::vector<uint8_t> templateCatalogue = chooseTemplateCatalogue(
        QCoreApplication::applicationDirPath().toStdString(), shippedCatalogue());
    Session session(root.path, clock, settings, templateCatalogue);

    std::string reason;
    switch (session.start(reason)) {
        case Session::Start::AlreadyRunning:
            return 0;  // another copy works on this data: end quietly
        case Session::Start::Failed:
            QMessageBox::critical(nullptr, QStringLiteral("Nutrovex"), toQString(reason));
            return 1;
        case Session::Start::Running:
            break;
    }

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Nutrovex"));
    window.resize(360, 640);
    auto* status = new QLabel(&window);
    status->setAlignment(Qt::AlignCenter);
    status->setWordWrap(true);
    window.setCentralWidget(status);
    window.show();

    const SessionStatus loaded = session.initialLoad();
    if (!loaded) {
        QMessageBox::warning(&window, QStringLiteral("Nutrovex"), toQString(loaded.message()));
    }
    status->setText(toQString(std::string(session.openUserName())) + QStringLiteral("\n") +
                    toQString(longDateText(session.days().currentDate())));
    return QApplication::exec();
}
