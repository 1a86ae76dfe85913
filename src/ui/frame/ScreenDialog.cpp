#include "ui/frame/ScreenDialog.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/frame/AboutDialog.h"
#include "ui/frame/Tour.h"

namespace nutrovex {

ScreenDialog::ScreenDialog(const QString& title, QWidget* parent)
    : QDialog(parent),
      m_menuBar(new QMenuBar(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_body(new QVBoxLayout) {
    setWindowTitle(title);
    setModal(true);
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setAutoDefault(false);
    m_menuBar->setNativeMenuBar(false);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    auto* top = new QHBoxLayout;
    top->addWidget(m_ok);
    top->addStretch(1);
    layout->addLayout(top);
    layout->addLayout(m_body, 1);

    resize(parent != nullptr ? parent->window()->size()
                             : QSize(kDefaultWindowWidth, kDefaultWindowHeight));
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
}

void ScreenDialog::reject() {
    accept();
}

void ScreenDialog::addAboutCommand(QMenu* menu) {
    QAction* about = menu->addAction(QStringLiteral("&About..."));
    about->setStatusTip(QStringLiteral("About"));
    connect(about, &QAction::triggered, this, [this] {
        AboutDialog dialog(this);
        dialog.exec();
    });
}

}  // namespace nutrovex
