#pragma once

#include <QString>
#include <functional>

#include "logbook/Logbook.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;
class QSpinBox;
class QTabBar;
class QToolButton;

namespace nutrovex {

// The screens of other areas that the logbook opens. Each runs its screen modally for the
// logbook's current date and returns when it has closed; an empty one leaves its command
// disabled.
struct LogbookOpeners {
    std::function<void(QWidget* parent)> meals;
    std::function<void(QWidget* parent)> exercise;
    std::function<void(QWidget* parent)> historicWeightChart;
    std::function<void(QWidget* parent)> weightChart;  // the chart with body-mass bands
    std::function<void(QWidget* parent)> catalogue;
};

// The logbook form: one date at a time with its figures, the commands that open the day's
// screens, day navigation and deletion. A thin view of Logbook; every detail screen that can
// change the day is followed by a save of the user's data, whatever closed it.
class LogbookDialog : public LogbookScreen {
    Q_OBJECT

public:
    LogbookDialog(SessionNotifier& notifier, QWidget* parent, LogbookOpeners openers = {});

    enum class Figure { Weight, Meals, Bmr, Exercise, Total };
    [[nodiscard]] QString figureText(Figure figure) const;
    [[nodiscard]] QString dateText() const;
    [[nodiscard]] QString recordText() const;
    [[nodiscard]] QString goalText() const;
    [[nodiscard]] QSpinBox* waterBox() const { return m_water; }
    // "Logbook", "Food Log", "Daily Journal", "Summary Table": a tap opens that screen.
    [[nodiscard]] QTabBar* tabs() const { return m_tabs; }
    [[nodiscard]] QPushButton* dateButton() const { return m_date; }
    [[nodiscard]] QToolButton* previousButton() const { return m_previous; }
    [[nodiscard]] QToolButton* nextButton() const { return m_next; }
    // The figure's button ("Weight", "Meals", "BMR", "Exercise").
    [[nodiscard]] QPushButton* figureButton(Figure figure) const;
    // A menu command by its text without the mnemonic ("Weigh In", "Range of Days...").
    [[nodiscard]] QAction* command(const QString& text) const;

private:
    struct Row {
        QLabel* name = nullptr;
        QPushButton* value = nullptr;
        QLabel* unit = nullptr;
        QPushButton* button = nullptr;
    };

    void buildMenus();
    QAction* addCommand(QMenu* menu, const QString& text, const std::function<void()>& run,
                        const QList<QKeySequence>& keys = {});
    void refresh();
    void run(const Notices& notices);
    // After a detail screen: the user's data is written at once, and the form redrawn.
    void thenSave();
    void openDetail(QDialog* screen);
    void openInjected(const std::function<void(QWidget*)>& opener, bool save);
    void confirm(const ScreenMessage& message, const std::function<Notices()>& onYes);

    void weighIn();
    void bmr();
    void journal();
    void pickDate();
    void deleteRange();

    Logbook m_logbook;
    LogbookOpeners m_openers;
    QToolButton* m_previous;
    QPushButton* m_date;
    QToolButton* m_next;
    Row m_rows[5];
    QLabel* m_goal;
    QLabel* m_record;
    QSpinBox* m_water;
    QTabBar* m_tabs;
    bool m_refreshing = false;
};

}  // namespace nutrovex
