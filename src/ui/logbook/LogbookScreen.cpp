#include "ui/logbook/LogbookScreen.h"

#include <QMenu>
#include <QMenuBar>

namespace nutrovex {

LogbookScreen::LogbookScreen(SessionNotifier& notifier, QWidget* parent, const QString& title)
    : ScreenDialog(title, parent), m_notifier(&notifier) {}

QMenu* LogbookScreen::addOptionsMenu(const std::function<void(QMenu*)>& fill) {
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    if (fill) {
        fill(options);
        options->addSeparator();
    }
    addAboutCommand(options);
    return options;
}

void openChild(QDialog* child, std::function<void(int result)> then) {
    child->setAttribute(Qt::WA_DeleteOnClose);
    if (then) {
        QObject::connect(child, &QDialog::finished, child,
                         [then = std::move(then)](int result) { then(result); });
    }
    child->open();
}

}  // namespace nutrovex
