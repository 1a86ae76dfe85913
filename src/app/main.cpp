#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>

#include "core/Session.h"
#include "data/ShippedCatalogue.h"
#include "storage/FileIo.h"
#include "ui/TextConvert.h"
#include "ui/frame/QtSessionSettings.h"

using namespace nutrovex;

int main(int argc, char** argv) {
    tuneHeapForLargeLoads();
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Zerbu"));
    QApplication::setApplicationName(QStringLiteral("Nutrovex"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Nutrovex, a nutrition and fitness logbook"));
    parser.addHelpOption();
    const QCommandLineOption rootOption(
        QStringLiteral("root"), QStringLiteral("Keep the data in <dir>."), QStringLiteral("dir"));
    parser.addOption(rootOption);
    parser.process(app);

    const DataRootChoice root = chooseDataRoot(parser.value(rootOption).toStdString());
    const SystemClock clock;
    QtSessionSettings settings(root);
    Session session(root.path, clock, settings, shippedCatalogue());

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
                    toQString(longDateText(session.store().currentDate)));
    return QApplication::exec();
}
