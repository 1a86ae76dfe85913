#include "ui/frame/RunningCopy.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <utility>
#include <vector>

namespace nutrovex {

namespace {

const QByteArray kComeForward = QByteArrayLiteral("come forward\n");
const QByteArray kComing = QByteArrayLiteral("coming\n");

}  // namespace

RunningCopy::RunningCopy(const std::filesystem::path& root, QObject* parent)
    : QObject(parent), m_name(serverName(root)), m_server(new QLocalServer(this)) {
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &RunningCopy::answer);
}

QString RunningCopy::serverName(const std::filesystem::path& root) {
    std::error_code ec;
    std::filesystem::path canonical = std::filesystem::weakly_canonical(root, ec);
    if (ec) {
        canonical = std::filesystem::absolute(root, ec);
    }
    std::string text = canonical.lexically_normal().string();
    while (text.size() > 1 && text.back() == '/') {
        text.pop_back();  // "root/Users/.." normalises to "root/"
    }
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Sha256);
    return QStringLiteral("nutrovex-") + QString::fromLatin1(hash.toHex().left(24));
}

bool RunningCopy::listen() {
    // Only the lock's holder gets here, so whatever still has the name is left by a dead copy.
    QLocalServer::removeServer(m_name);
    return m_server->listen(m_name);
}

void RunningCopy::answer() {
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine()) {
                return;
            }
            if (socket->readLine() == kComeForward) {
                socket->write(kComing);
                socket->flush();
                Q_EMIT comeForwardAsked();
            }
            socket->disconnectFromServer();
        });
    }
}

bool RunningCopy::askToComeForward(const std::filesystem::path& root, int timeoutMs) {
    // The lock's holder may not be listening yet when it has only just started.
    QElapsedTimer waited;
    waited.start();
    QLocalSocket socket;
    for (;;) {
        socket.connectToServer(serverName(root));
        if (socket.waitForConnected(timeoutMs)) {
            break;
        }
        if (waited.elapsed() >= timeoutMs) {
            return false;
        }
        QThread::msleep(50);
    }
    socket.write(kComeForward);
    if (!socket.waitForBytesWritten(timeoutMs)) {
        return false;
    }
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(timeoutMs)) {
            return false;
        }
    }
    return socket.readLine() == kComing;
}

namespace {

// How many screens lie between a screen and the window; -1 when it is not opened from it.
int depthOver(const QWidget* screen, const QWidget* window) {
    int depth = 0;
    for (const QWidget* w = screen; w != nullptr; ++depth) {
        if (w == window) {
            return depth;
        }
        w = w->parentWidget() != nullptr ? w->parentWidget()->window() : nullptr;
    }
    return -1;
}

}  // namespace

void bringForward(QWidget* window) {
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    // The window, then every screen open over it in the order they were opened, so that the
    // screen a person was on is on top again.
    std::vector<std::pair<int, QWidget*>> stack;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        const int depth = depthOver(w, window);
        if (depth >= 0 && (w == window || w->isVisible())) {
            stack.emplace_back(depth, w);
        }
    }
    std::stable_sort(stack.begin(), stack.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [depth, w] : stack) {
        w->raise();
    }
    stack.back().second->activateWindow();
}

}  // namespace nutrovex
