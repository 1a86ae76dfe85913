#include "ui/frame/ScreenDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QVBoxLayout>

#include "ui/frame/AboutDialog.h"
#include "ui/frame/Tour.h"

namespace nutrovex {

void coverOpener(QWidget& screen, QWidget* parent) {
    if (parent == nullptr) {
        screen.resize(kDefaultWindowWidth, kDefaultWindowHeight);
        return;
    }
    const QWidget* under = parent->window();
    screen.resize(under->size());
    // A window's position includes its frame, as does move(): both frames line up.
    screen.move(under->pos());
}

ScreenDialog::ScreenDialog(const QString& title, QWidget* parent)
    : QDialog(parent),
      m_menuBar(new QMenuBar(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_body(new QVBoxLayout),
      m_top(new QHBoxLayout) {
    setWindowTitle(title);
    setModal(true);
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setAutoDefault(false);
    m_menuBar->setNativeMenuBar(false);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    m_top->addWidget(m_ok);
    m_top->addStretch(1);
    layout->addLayout(m_top);
    layout->addLayout(m_body, 1);

    coverOpener(*this, parent);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
}

void ScreenDialog::enableStatusLine() {
    if (m_status == nullptr) {
        m_status = new QStatusBar(this);
        m_status->setSizeGripEnabled(false);
        m_status->setAccessibleName(QStringLiteral("Status"));
        layout()->addWidget(m_status);
    }
}

bool ScreenDialog::event(QEvent* event) {
    // A menu entry's prompt travels up from the menu bar; a dialog has no status bar of its own.
    if (event->type() == QEvent::StatusTip && m_status != nullptr) {
        m_status->showMessage(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QDialog::event(event);
}

void ScreenDialog::reject() {
    accept();
}

QLabel* ScreenDialog::dateLine() {
    if (m_date == nullptr) {
        m_date = makeDateLine(this);
        m_top->addWidget(m_date);
    }
    return m_date;
}

QLabel* makeDateLine(QWidget* parent) {
    // Unnamed: a reader hears the date it shows.
    auto* date = new QLabel(parent);
    date->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont bold = date->font();
    bold.setBold(true);
    date->setFont(bold);
    return date;
}

void ScreenDialog::addAboutCommand(QMenu* menu) {
    (void)nutrovex::addAboutCommand(menu, this);
}

QAction* addAboutCommand(QMenu* menu, QWidget* screen) {
    QAction* about = menu->addAction(QStringLiteral("&About..."));
    about->setStatusTip(QStringLiteral("About"));
    QObject::connect(about, &QAction::triggered, screen, [screen] {
        AboutDialog dialog(screen);
        dialog.exec();
    });
    return about;
}

QMenu* addAboutMenu(QMenuBar* menuBar, QWidget* screen) {
    QMenu* options = menuBar->addMenu(QStringLiteral("&Options"));
    (void)addAboutCommand(options, screen);
    return options;
}

}  // namespace nutrovex
