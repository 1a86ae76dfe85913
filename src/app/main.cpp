#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <string_view>

#include "charts/ChartSettings.h"
#include "data/ShippedCatalogue.h"
#include "forms/frame/MainFrameForm.h"
#include "session/Session.h"
#include "storage/CatalogueStorage.h"
#include "ui/Resources.h"
#include "ui/TextConvert.h"
#include "ui/charts/QtChartSettings.h"
#include "ui/controls/FocusStyle.h"
#include "ui/controls/GridAccessible.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/CNutrovexView.h"
#include "ui/frame/FrameTour.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/QtSessionSettings.h"
#include "ui/frame/RunningCopy.h"
#include "ui/frame/SessionNotifier.h"

using namespace nutrovex;

namespace {

// --tour DIR: opens every screen on the root's data and saves its pictures; nothing is asked and
// nothing is saved. Failures go to stderr.
int runTourMode(Session& session, SessionNotifier& notifier, FrameOpeners openers,
                const QString& dir) {
    const SessionStatus loaded = session.initialLoad();
    if (!loaded) {
        std::fprintf(stderr, "nutrovex: %s\n", loaded.message().c_str());
    }
    CMainFrame frame(MainFrameForm(session), notifier, std::move(openers));
    frame.show();
    const QStringList failures = runTour(dir, allTourStops(session, notifier), &frame);
    for (const QString& failure : failures) {
        std::fprintf(stderr, "nutrovex: %s\n", failure.toLocal8Bit().constData());
    }
    return failures.isEmpty() ? 0 : 1;
}

// The process's resident memory, from /proc; 0 where that cannot be read.
double residentMegabytes() {
    std::FILE* statm = std::fopen("/proc/self/statm", "r");
    long pages = 0;
    long resident = 0;
    if (statm != nullptr) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) {
            resident = 0;
        }
        std::fclose(statm);
    }
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

// The page faults the process has taken so far.
long pageFaults() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt + usage.ru_majflt;
}

// --measure-start: how long from the program's start to the main menu painted with the data
// loaded, beside the loads alone, and the page faults of both. Prints them and ends.
class FirstPaintAfterLoad : public QObject {
public:
    FirstPaintAfterLoad(const QElapsedTimer& sinceStart, qint64 loadNs, long loadFaults)
        : m_sinceStart(&sinceStart), m_loadNs(loadNs), m_loadFaults(loadFaults) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !m_done) {
            m_done = true;
            // Runs once this paint has finished.
            QTimer::singleShot(0, qApp, [this] {
                std::printf(
                    "start to first painted main menu: %.1f ms; the loads alone: %.1f ms; "
                    "resident memory: %.1f MB; page faults: %ld, of the loads: %ld\n",
                    static_cast<double>(m_sinceStart->nsecsElapsed()) / 1e6,
                    static_cast<double>(m_loadNs) / 1e6, residentMegabytes(), pageFaults(),
                    m_loadFaults);
                QApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const QElapsedTimer* m_sinceStart;
    qint64 m_loadNs;
    long m_loadFaults;
    bool m_done = false;
};

}  // namespace

int main(int argc, char** argv) {
    QElapsedTimer sinceStart;
    sinceStart.start();
    // Past a file-size limit a save fails with a message instead of killing the program.
    std::signal(SIGXFSZ, SIG_IGN);
    // The version answers without a display, as on a server or in a package check.
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--version") {
            std::printf("Nutrovex %s\n", NUTROVEX_VERSION);
            return 0;
        }
    }
    QApplication app(argc, argv);
    installAccessibility();
    installFocusStyle();
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
    const QCommandLineOption tourOption(
        QStringLiteral("tour"),
        QStringLiteral("Save a picture of every screen into <dir>, then end."),
        QStringLiteral("dir"));
    const QCommandLineOption measureOption(
        QStringLiteral("measure-start"),
        QStringLiteral("Print the time to the first painted main menu, then end."));
    parser.addOption(rootOption);
    parser.addOption(tourOption);
    parser.addOption(measureOption);
    parser.process(app);

    const DataRootChoice root = chooseDataRoot(parser.value(rootOption).toStdString());
    const SystemClock clock;
    QtSessionSettings settings(root);
    const std::vector<uint8_t> templateCatalogue = chooseTemplateCatalogue(
        QCoreApplication::applicationDirPath().toStdString(), shippedCatalogue());
    // The tour only looks: it writes nothing into the root, whatever it finds there.
    Session session(root.path, clock, settings, templateCatalogue,
                    parser.isSet(tourOption) ? Session::Access::LookOnly : Session::Access::Write);

    std::string reason;
    switch (session.start(reason)) {
        case Session::Start::AlreadyRunning:
            // Another copy works on this data: it comes forward, and this one ends.
            if (!parser.isSet(tourOption) && RunningCopy::askToComeForward(root.path)) {
                std::printf("Nutrovex already runs on %s; its window was brought forward.\n",
                            root.path.string().c_str());
            }
            return 0;
        case Session::Start::Failed:
            if (parser.isSet(tourOption)) {
                std::fprintf(stderr, "nutrovex: %s\n", reason.c_str());
            } else {
                QMessageBox::critical(nullptr, QStringLiteral("Nutrovex"), toQString(reason));
            }
            return 1;
        case Session::Start::Running:
            break;
    }

    // The lock's holder answers copies started after it; they are heard once the loop runs.
    RunningCopy runningCopy(root.path);
    if (!parser.isSet(tourOption)) {
        (void)runningCopy.listen();
    }

    SessionNotifier notifier(session);
    if (parser.isSet(tourOption)) {
        MemoryChartSettings tourCharts;  // the tour leaves the person's chart choices alone
        return runTourMode(session, notifier, programOpeners(session, notifier, tourCharts),
                           parser.value(tourOption));
    }

    QtChartSettings chartSettings(root);
    CMainFrame frame(MainFrameForm(session), notifier,
                     programOpeners(session, notifier, chartSettings));
    frame.show();
    QObject::connect(&runningCopy, &RunningCopy::comeForwardAsked, &frame,
                     [&frame] { bringForward(&frame); });
    std::unique_ptr<FirstPaintAfterLoad> watcher;
    if (parser.isSet(measureOption)) {
        QTimer::singleShot(0, &frame, [&] {
            const long faultsBefore = pageFaults();
            QElapsedTimer load;
            load.start();
            (void)frame.initialLoad();
            const qint64 loadNs = load.nsecsElapsed();
            watcher = std::make_unique<FirstPaintAfterLoad>(sinceStart, loadNs,
                                                            pageFaults() - faultsBefore);
            frame.view()->installEventFilter(watcher.get());
            frame.view()->update();
        });
        return QApplication::exec();
    }
    // The load runs once the window exists and the event loop turns.
    QTimer::singleShot(0, &frame, [&frame] { (void)frame.initialLoad(); });
    return QApplication::exec();
}
