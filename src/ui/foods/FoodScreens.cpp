#include "ui/foods/FoodScreens.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/frame/ScreenDialog.h"

namespace nutrovex {

QString accessibleText(const QString& label) {
    QString text = label;
    text.remove(QLatin1Char('&'));
    if (text.endsWith(QLatin1Char(':'))) {
        text.chop(1);
    }
    return text;
}

FoodScreen::FoodScreen(QWidget* parent, const QString& title, bool escapeAccepts)
    : QDialog(parent),
      m_menuBar(new QMenuBar(this)),
      m_buttonRow(new QHBoxLayout),
      m_content(new QVBoxLayout),
      m_escapeAccepts(escapeAccepts) {
    setWindowTitle(title);
    setModal(true);
    coverOpener(*this, parent);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    layout->addLayout(m_buttonRow);
    layout->addLayout(m_content, 1);
}

void FoodScreen::reject() {
    if (m_escapeAccepts) {
        accept();
    } else {
        QDialog::reject();
    }
}

QLabel* FoodScreen::dateLine() {
    if (m_date == nullptr) {
        // On a line of its own: the button rows are full at the default width.
        m_date = makeDateLine(this);
        m_date->setAlignment(Qt::AlignCenter);
        m_content->insertWidget(0, m_date);
    }
    return m_date;
}

QPushButton* FoodScreen::addButton(const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setAccessibleName(accessibleText(text));
    button->setAutoDefault(false);
    m_buttonRow->addWidget(button);
    return button;
}

}  // namespace nutrovex
