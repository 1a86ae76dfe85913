#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "forms/exercise/ExerciseLogForm.h"
#include "ui/controls/MWGridWidget.h"

class QAction;
class QLabel;
class QPushButton;

namespace nutrovex {

class ExercisePicker;
class SessionNotifier;

// The day's exercises: name, minutes and calories under a header row, with the form's selection.
class ExerciseGrid : public MWGridWidget {
    Q_OBJECT

public:
    explicit ExerciseGrid(QWidget* parent = nullptr);

    // Shows the rows and the selection.
    void show(const ExerciseLogView& view);
    // Selects one row of exercises (0 is the first) and reports it.
    void selectRow(int row);

Q_SIGNALS:
    void editRequested();
    // The person moved the selection: rows of exercises, from the anchor to the current one.
    void selected(int anchor, int current);

protected:
    [[nodiscard]] QString cellText(int row, int column) const override;
    [[nodiscard]] int cellAlignment(int row, int column) const override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fitColumns();

    std::vector<ExerciseRow> m_rows;
};

// The exercise log of the logbook's current date: a thin view of ExerciseLogForm. It saves what
// changed when it closes.
class ExerciseLogDialog : public QDialog {
    Q_OBJECT

public:
    ExerciseLogDialog(ExerciseLogForm form, SessionNotifier& notifier, QWidget* parent);
    ~ExerciseLogDialog() override;

    // How messages and questions are put to the person (a message box unless replaced).
    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);
    // How "Edit Exercise" is run on its form (the dialog, modally, unless replaced).
    void setEditRunner(std::function<void(EditExerciseForm form)> run);

    [[nodiscard]] ExercisePicker* picker() const { return m_picker; }
    [[nodiscard]] ExerciseGrid* grid() const { return m_grid; }
    [[nodiscard]] QPushButton* logButton() const { return m_log; }

    void copy();
    void cut();
    void paste();
    void selectAll();
    void deleteSelected();
    void editSelected();

    void done(int result) override;

private:
    bool present(const ScreenMessage& message);
    void run(ExerciseLogForm::Command command);
    void redraw();

    ExerciseLogForm m_form;
    SessionNotifier* m_notifier;
    QLabel* m_date;
    ExercisePicker* m_picker;
    QPushButton* m_ok;
    QPushButton* m_log;
    ExerciseGrid* m_grid;
    QAction* m_paste = nullptr;
    QAction* m_edit = nullptr;
    std::function<bool(const ScreenMessage&)> m_present;
    std::function<void(EditExerciseForm)> m_runEdit;
};

}  // namespace nutrovex
