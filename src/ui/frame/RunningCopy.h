#pragma once

#include <QObject>
#include <QString>

#include <filesystem>

class QLocalServer;
class QWidget;

namespace nutrovex {

// The copy of the program that holds a data root's lock listens under a name made from the root.
// A second copy started on the same root asks it to come forward instead of ending unseen.
class RunningCopy : public QObject {
    Q_OBJECT

public:
    explicit RunningCopy(const std::filesystem::path& root, QObject* parent = nullptr);

    // Starts listening; only the lock's holder calls it, so a name left by a killed copy is
    // cleared first. False when the system refuses (the program runs on without it).
    bool listen();

    // The name a root's running copy listens under: the same for every spelling of the root.
    [[nodiscard]] static QString serverName(const std::filesystem::path& root);
    // Asks the copy running on root to come forward, waiting up to timeoutMs for it to listen;
    // true once it has answered.
    [[nodiscard]] static bool askToComeForward(const std::filesystem::path& root,
                                               int timeoutMs = 3000);

Q_SIGNALS:
    void comeForwardAsked();

private:
    void answer();

    QString m_name;
    QLocalServer* m_server;
};

// Brings the program's window to the front, with the screen open over it on top.
void bringForward(QWidget* window);

}  // namespace nutrovex
