#include "ui/logbook/ScreenDialog.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/frame/AboutDialog.h"
#include "ui/frame/Tour.h"

namespace nutrovex {

ScreenDialog::ScreenDialog(SessionNotifier& notifier, QWidget* parent, const QString& title)
    : QDialog(parent),
      m_notifier(&notifier),
      m_menuBar(new QMenuBar(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_body(new QVBoxLayout) {
    setWindowTitle(title);
    setModal(true);
    resize(parent != nullptr ? parent->window()->size()
                             : QSize(kDefaultWindowWidth, kDefaultWindowHeight));
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setAutoDefault(false);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* top = new QHBoxLayout;
    top->addWidget(m_ok);
    top->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    layout->addLayout(top);
    layout->addLayout(m_body, 1);
}

void ScreenDialog::reject() {
    accept();
}

QMenu* ScreenDialog::addOptionsMenu(const std::function<void(QMenu*)>& fill) {
    QMenu* options = m_menuBar->addMenu(QStringLiteral("&Options"));
    if (fill) {
        fill(options);
        options->addSeparator();
    }
    QAction* about = options->addAction(QStringLiteral("&About..."));
    connect(about, &QAction::triggered, this, [this] { openChild(new AboutDialog(this)); });
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
