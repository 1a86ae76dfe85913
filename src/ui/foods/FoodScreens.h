#pragma once

#include <QDialog>
#include <QString>

class QBoxLayout;
class QLabel;
class QMenuBar;
class QPushButton;
class QVBoxLayout;

namespace nutrovex {

// The frame every food screen shares: a menu bar, a row with the screen's first button at the
// top left, and the content below. Escape leaves as that button does when escapeAccepts is set.
class FoodScreen : public QDialog {
    Q_OBJECT

public:
    FoodScreen(QWidget* parent, const QString& title, bool escapeAccepts);

    [[nodiscard]] QMenuBar* menuBar() const { return m_menuBar; }
    [[nodiscard]] QBoxLayout* buttonRow() const { return m_buttonRow; }
    [[nodiscard]] QVBoxLayout* content() const { return m_content; }

    void reject() override;

protected:
    // The day the screen is about, on a line above the content; made on first use.
    [[nodiscard]] QLabel* dateLine();
    // A push button with a mnemonic, its accessible name the text without the ampersand.
    QPushButton* addButton(const QString& text);

private:
    QMenuBar* m_menuBar;
    QBoxLayout* m_buttonRow;
    QVBoxLayout* m_content;
    bool m_escapeAccepts;
    QLabel* m_date = nullptr;
};

// A label's text without its mnemonic marker and trailing colon, as an accessible name.
[[nodiscard]] QString accessibleText(const QString& label);

}  // namespace nutrovex
