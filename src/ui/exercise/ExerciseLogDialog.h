#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "ui/controls/MWGridWidget.h"

class QAction;
class QLabel;
class QPushButton;

namespace nutrovex {

class ExerciseLog;
class ExercisePicker;
class SessionNotifier;

// The day's exercises: name, minutes and calories under a header row.
class ExerciseGrid : public MWGridWidget {
    Q_OBJECT

public:
    explicit ExerciseGrid(ExerciseLog& log, QWidget* parent = nullptr);

    // Rows follow the day's exercises.
    void reload();
    // The selected exercises: every row after "Select All", else the rows between the anchor and
    // the current cell.
    [[nodiscard]] std::vector<Position> selectedRows() const;
    void selectAllRows();
    void selectRow(int row);

Q_SIGNALS:
    void editRequested();

protected:
    [[nodiscard]] QString cellText(int row, int column) const override;
    [[nodiscard]] int cellAlignment(int row, int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fitColumns();

    ExerciseLog* m_log;
};

// The exercise log of the logbook's current date: choose an exercise, compute or type its
// calories, log it; the grid's exercises are copied, cut, pasted, deleted and edited.
class ExerciseLogDialog : public QDialog {
    Q_OBJECT

public:
    ExerciseLogDialog(SessionNotifier& notifier, QWidget* parent);
    ~ExerciseLogDialog() override;

    // How messages and questions are put to the person (a message box unless replaced).
    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);
    // How "Edit Exercise" is run on a row (the dialog, modally, unless replaced).
    void setEditRunner(std::function<void(Position row)> run);

    [[nodiscard]] ExercisePicker* picker() const { return m_picker; }
    [[nodiscard]] ExerciseGrid* grid() const { return m_grid; }
    [[nodiscard]] QPushButton* logButton() const { return m_log; }

    void copy();
    void cut();
    void paste();
    void selectAll();
    void deleteSelected();
    void editSelected();

private:
    bool present(const ScreenMessage& message);
    void apply(const Notices& notices);
    void redraw();

    SessionNotifier* m_notifier;
    std::unique_ptr<ExerciseLog> m_exercises;
    QLabel* m_date;
    ExercisePicker* m_picker;
    QPushButton* m_ok;
    QPushButton* m_log;
    ExerciseGrid* m_grid;
    QAction* m_paste = nullptr;
    QAction* m_edit = nullptr;
    std::function<bool(const ScreenMessage&)> m_present;
    std::function<void(Position)> m_runEdit;
};

}  // namespace nutrovex
