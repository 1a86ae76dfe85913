#pragma once

#include <QWidget>
#include <array>

class QLabel;
class QPushButton;

namespace nutrovex {

// The main menu: the banner across the top and the four steps, each a button with its label.
class CNutrovexView : public QWidget {
    Q_OBJECT

public:
    explicit CNutrovexView(QWidget* parent = nullptr);

    // The step buttons, Step 1 to Step 4.
    [[nodiscard]] QPushButton* stepButton(int index) const { return m_buttons.at(index); }

Q_SIGNALS:
    // A step was chosen: its menu command (kHealthyDietingStep ... kLogbookStep).
    void stepChosen(int command);

private:
    std::array<QPushButton*, 4> m_buttons{};
};

}  // namespace nutrovex
