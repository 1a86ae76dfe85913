#pragma once

#include <QDialog>
#include <functional>

class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QStatusBar;
class QVBoxLayout;

namespace nutrovex {

// Opens another screen over the given parent; empty where that screen is not part of the program.
using ScreenOpener = std::function<void(QWidget* parent)>;

// Places a screen exactly over the window of the widget it is opened from, so that it covers it
// rather than floating over it; without a parent it takes the default window's size.
void coverOpener(QWidget& screen, QWidget* parent);

// Adds "About..." to a menu, opening the about box over the given screen.
QAction* addAboutCommand(QMenu* menu, QWidget* screen);
// Adds an "Options" menu holding "About..." to a screen's menu bar.
QMenu* addAboutMenu(QMenuBar* menuBar, QWidget* screen);

// The line naming the day a screen is about, in the style every screen shares.
[[nodiscard]] QLabel* makeDateLine(QWidget* parent);

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
    bool event(QEvent* event) override;
    // A status line at the foot of the screen that shows the menu entries' prompts.
    void enableStatusLine();
    // The screen's own controls go here, under the OK row.
    [[nodiscard]] QVBoxLayout* body() const { return m_body; }
    // Adds "About..." to a menu, opening the about box over this screen.
    void addAboutCommand(QMenu* menu);
    // The day the screen is about, at the right of the OK row; made on first use.
    [[nodiscard]] QLabel* dateLine();

private:
    QMenuBar* m_menuBar;
    QPushButton* m_ok;
    QVBoxLayout* m_body;
    QHBoxLayout* m_top;
    QLabel* m_date = nullptr;
    QStatusBar* m_status = nullptr;
};

}  // namespace nutrovex
