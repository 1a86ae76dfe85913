#pragma once

#include <QDialog>
#include <functional>

class QMenu;
class QMenuBar;
class QPushButton;
class QVBoxLayout;

namespace nutrovex {

// Opens another screen over the given parent; empty where that screen is not part of the program.
using ScreenOpener = std::function<void(QWidget* parent)>;

// A screen over the main window: modal, the same size as the window it covers, with its own menu
// bar and an "OK" at its top left that returns to the screen beneath. Escape acts as OK.
class ScreenDialog : public QDialog {
    Q_OBJECT

public:
    ScreenDialog(const QString& title, QWidget* parent);

    [[nodiscard]] QMenuBar* menuBar() const { return m_menuBar; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }

    // Escape, and closing the window, return like OK: the screens keep no transaction to cancel.
    void reject() override;

protected:
    // The screen's own controls go here, under the OK row.
    [[nodiscard]] QVBoxLayout* body() const { return m_body; }
    // Adds "About..." to a menu, opening the about box over this screen.
    void addAboutCommand(QMenu* menu);

private:
    QMenuBar* m_menuBar;
    QPushButton* m_ok;
    QVBoxLayout* m_body;
};

}  // namespace nutrovex
