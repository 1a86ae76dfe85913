#pragma once

#include <QString>
#include <functional>

#include "forms/logbook/LogbookForm.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;
class QSpinBox;
class QTabBar;
class QToolButton;

namespace nutrovex {

// Builds one of the logbook's own screens with its form, for the logbook's current date; the
// logbook opens it over itself and redraws when it closes.
using ScreenMaker = std::function<QDialog*(QWidget* parent)>;

// The screens the logbook opens, each built with its form by whoever made the logbook. The
// openers of other areas run their screen modally and return when it has closed. An empty one
// leaves its command disabled.
struct LogbookOpeners {
    ScreenMaker weighIn;
    ScreenMaker bmr;
    ScreenMaker journal;
    ScreenMaker foodBudget;
    ScreenMaker foodBudgetBox;
    ScreenMaker summaryTable;
    ScreenMaker dayRange;      // "Range of Days...": deletes the range on OK
    ScreenMaker printReport;   // the report screen, "Print..." its default
    ScreenMaker exportReport;  // the report screen, "Export PDF..." its default
    ScreenOpener meals;
    ScreenOpener exercise;
    ScreenOpener historicWeightChart;
    ScreenOpener weightChart;  // the chart with body-mass bands
    ScreenOpener catalogue;
    ScreenOpener copyDay;  // Copy To on the whole current day
};

// The logbook screen: a thin view of LogbookForm, with the commands that open the day's screens.
// Each of those screens saves what it changed when it closes.
class LogbookDialog : public LogbookScreen {
    Q_OBJECT

public:
    LogbookDialog(LogbookForm form, SessionNotifier& notifier, QWidget* parent,
                  LogbookOpeners openers = {});

    enum class Figure { Weight, Meals, Bmr, Exercise, Total };
    [[nodiscard]] QString figureText(Figure figure) const;
    [[nodiscard]] QString dateText() const;
    [[nodiscard]] QString recordText() const;
    [[nodiscard]] QString goalText() const;
    // The day at a glance as shown, in plain text (meals, exercises, what is left, notes).
    [[nodiscard]] QString glanceText() const;
    [[nodiscard]] QSpinBox* waterBox() const { return m_water; }
    // "Logbook", "Food Log", "Daily Journal", "Summary Table": a tap opens that screen.
    [[nodiscard]] QTabBar* tabs() const { return m_tabs; }
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
    // Disabled without its screen.
    QAction* addScreen(QMenu* menu, const QString& text, const ScreenMaker& make);
    QAction* addScreen(QMenu* menu, const QString& text, const ScreenOpener& open);
    void refresh();
    void run(const Outcome& outcome);
    void run(LogbookForm::Command command);
    void confirm(LogbookForm::Command command);
    void openDetail(const ScreenMaker& make);
    void openInjected(const ScreenOpener& opener);
    void pickDate();

    LogbookForm m_form;
    LogbookOpeners m_openers;
    QToolButton* m_previous;
    QPushButton* m_date;
    QToolButton* m_next;
    Row m_rows[5];
    QLabel* m_goal;
    QLabel* m_glance;
    QLabel* m_record;
    QSpinBox* m_water;
    QTabBar* m_tabs;
    bool m_refreshing = false;
};

}  // namespace nutrovex
