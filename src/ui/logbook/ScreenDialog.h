#pragma once

#include <QDialog>
#include <functional>

class QMenu;
class QMenuBar;
class QPushButton;
class QVBoxLayout;

namespace nutrovex {

class SessionNotifier;

// The frame every logbook screen shares: a modal dialog the size of the main window with its own
// menu bar, an "OK" button at its top left and the screen's body below. Escape acts as OK.
class ScreenDialog : public QDialog {
    Q_OBJECT

public:
    ScreenDialog(SessionNotifier& notifier, QWidget* parent, const QString& title);

    [[nodiscard]] QMenuBar* menuBar() const { return m_menuBar; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }
    [[nodiscard]] SessionNotifier& notifier() const { return *m_notifier; }

    void reject() override;

protected:
    [[nodiscard]] QVBoxLayout* body() const { return m_body; }
    // "Options": the screen's own entries (fill), then "About...".
    QMenu* addOptionsMenu(const std::function<void(QMenu*)>& fill = {});

private:
    SessionNotifier* m_notifier;
    QMenuBar* m_menuBar;
    QPushButton* m_ok;
    QVBoxLayout* m_body;
};

// Opens a child screen without blocking (window-modal over its parent) and runs then after it
// closed, whatever closed it. The child deletes itself.
void openChild(QDialog* child, std::function<void(int result)> then = {});

}  // namespace nutrovex
