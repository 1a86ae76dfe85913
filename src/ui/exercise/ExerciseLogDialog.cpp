#include "ui/exercise/ExerciseLogDialog.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"
#include "ui/exercise/EditExerciseDialog.h"
#include "ui/exercise/ExercisePicker.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

constexpr int kColumns = 3;  // name, minutes, calories

}  // namespace

ExerciseGrid::ExerciseGrid(QWidget* parent) : MWGridWidget(parent) {
    setAccessibleName(QStringLiteral("Exercises"));
    grid().setColumnCount(kColumns);
    grid().setFixedRows(1);
    grid().setDefaultRowHeight(fontMetrics().height() + 8);
    grid().setRowCount(1);
    fitColumns();
    const auto report = [this] {
        Q_EMIT selected(grid().anchor().row - 1, grid().current().row - 1);
    };
    connect(this, &MWGridWidget::keyHandled, this, report);
    connect(this, &MWGridWidget::cellTapped, this, report);
    connect(this, &MWGridWidget::selectionSet, this, report);
}

void ExerciseGrid::show(const ExerciseLogView& view) {
    m_rows = view.rows;
    grid().setRowCount(1 + static_cast<int>(m_rows.size()));
    const ExerciseRowSelection& s = view.selection;
    grid().setSelectAll(s.all);
    (void)grid().setSelection({s.anchor + 1, 0}, {s.current + 1, 0});
    grid().ensureCurrentVisible();
    fitColumns();
}

void ExerciseGrid::fitColumns() {
    const int width = std::max(viewport()->width(), 120);
    const int number = fontMetrics().horizontalAdvance(QStringLiteral("Calories")) + 16;
    grid().setColumnWidth(1, number);
    grid().setColumnWidth(2, number);
    grid().setColumnWidth(0, std::max(width - 2 * number - 1, 40));
    refresh();
}

void ExerciseGrid::resizeEvent(QResizeEvent* event) {
    MWGridWidget::resizeEvent(event);
    fitColumns();
}

QString ExerciseGrid::cellText(int row, int column) const {
    if (row == 0) {
        static const char* const kHeaders[kColumns] = {"Exercise", "Minutes", "Calories"};
        return column < kColumns ? QString::fromLatin1(kHeaders[column]) : QString();
    }
    const auto index = static_cast<std::size_t>(row - 1);
    if (index >= m_rows.size()) {
        return {};
    }
    const ExerciseRow& e = m_rows[index];
    switch (column) {
        case 0:
            return toQString(e.name);
        case 1:
            return toQString(e.minutes);
        case 2:
            return toQString(e.calories);
        default:
            return {};
    }
}

int ExerciseGrid::cellAlignment(int row, int column) const {
    if (row > 0 && column > 0) {
        return Qt::AlignRight | Qt::AlignVCenter;
    }
    return MWGridWidget::cellAlignment(row, column);
}

void ExerciseGrid::selectRow(int row) {
    grid().setSelectAll(false);
    selectCell(row + 1, 0);
    grid().resetAnchor();
    refresh();
    Q_EMIT selected(row, row);
}

void ExerciseGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    MWGridWidget::mouseDoubleClickEvent(event);
    if (currentRow() > 0) {
        Q_EMIT editRequested();
    }
}

void ExerciseGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2 && currentRow() > 0) {
        Q_EMIT editRequested();
        return;
    }
    MWGridWidget::keyPressEvent(event);
}

ExerciseLogDialog::ExerciseLogDialog(ExerciseLogForm form, SessionNotifier& notifier,
                                     QWidget* parent)
    : QDialog(parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_date(makeDateLine(this)),
      m_picker(new ExercisePicker(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_log(new QPushButton(QStringLiteral("&Log"), this)),
      m_grid(new ExerciseGrid(this)) {
    setWindowTitle(QStringLiteral("Exercise Log"));
    setModal(true);
    coverOpener(*this, parent);
    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setAutoDefault(false);
    m_log->setAccessibleName(QStringLiteral("Log"));
    m_log->setAutoDefault(false);
    m_date->setAccessibleName(QStringLiteral("Date"));

    auto* menuBar = new QMenuBar(this);
    QMenu* edit = menuBar->addMenu(QStringLiteral("&Edit"));
    QAction* cutAction = edit->addAction(QStringLiteral("Cu&t"), this, &ExerciseLogDialog::cut);
    cutAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_X));
    QAction* copyAction = edit->addAction(QStringLiteral("&Copy"), this, &ExerciseLogDialog::copy);
    copyAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    m_paste = edit->addAction(QStringLiteral("&Paste"), this, &ExerciseLogDialog::paste);
    m_paste->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_V));
    QAction* all =
        edit->addAction(QStringLiteral("Select &All"), this, &ExerciseLogDialog::selectAll);
    all->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_A));
    edit->addSeparator();
    m_edit = edit->addAction(QStringLiteral("&Edit..."), this, &ExerciseLogDialog::editSelected);
    QAction* del = edit->addAction(QStringLiteral("&Delete Exercises"), this,
                                   &ExerciseLogDialog::deleteSelected);
    // The grid's keys: the edits keep their own clipboard and Delete.
    for (QAction* a : {cutAction, copyAction, m_paste, all}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_grid->addAction(a);
    }
    del->setShortcut(QKeySequence(Qt::Key_Delete));
    del->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_grid->addAction(del);
    (void)addAboutMenu(menuBar, this);

    auto* top = new QHBoxLayout;
    top->addWidget(m_ok);
    top->addWidget(m_date, 1, Qt::AlignRight | Qt::AlignVCenter);
    auto* logRow = new QHBoxLayout;
    logRow->addStretch(1);
    logRow->addWidget(m_log);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menuBar);
    layout->addLayout(top);
    layout->addWidget(m_picker);
    layout->addLayout(logRow);
    layout->addWidget(m_grid, 1);

    setTabOrder(m_ok, m_picker);
    setTabOrder(m_picker->lastControl(), m_log);
    setTabOrder(m_log, m_grid);

    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_picker, &ExercisePicker::edited, this,
            [this](ExerciseChoice::Field field, const QString& text) {
                m_form.edit(field, fromQString(text).value_or(std::string()));
                redraw();
            });
    connect(m_picker, &ExercisePicker::caloriesRequested, this, [this] {
        const Outcome outcome = m_form.command(ExerciseLogForm::Command::Calories);
        if (outcome.message) {
            (void)present(*outcome.message);
            m_picker->minutesEdit()->setFocus();
        }
        redraw();
    });
    connect(m_log, &QPushButton::clicked, this, [this] { run(ExerciseLogForm::Command::Log); });
    connect(m_grid, &ExerciseGrid::selected, this,
            [this](int anchor, int current) { m_form.select(anchor, current); });
    connect(m_grid, &ExerciseGrid::editRequested, this, &ExerciseLogDialog::editSelected);
    using Signal = void (SessionNotifier::*)();
    for (const Signal signal : {&SessionNotifier::dataChanged, &SessionNotifier::userChanged,
                                &SessionNotifier::dayCreated}) {
        connect(m_notifier, signal, this, &ExerciseLogDialog::redraw);
    }
    redraw();
    m_picker->typeCombo()->setFocus();
}

ExerciseLogDialog::~ExerciseLogDialog() = default;

void ExerciseLogDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void ExerciseLogDialog::setEditRunner(std::function<void(EditExerciseForm)> run) {
    m_runEdit = std::move(run);
}

bool ExerciseLogDialog::present(const ScreenMessage& message) {
    return m_present ? m_present(message) : showMessage(this, message);
}

void ExerciseLogDialog::run(ExerciseLogForm::Command command) {
    const Outcome outcome = m_form.command(command);
    (void)showFailure(this, m_notifier->apply(outcome));
    redraw();
    if (outcome.message) {
        (void)present(*outcome.message);
    }
}

void ExerciseLogDialog::redraw() {
    const ExerciseLogView v = m_form.view();
    showFigure(m_date, QStringLiteral("Date"), toQString(v.date));
    m_picker->show(v.choice);
    m_log->setEnabled(v.choice.logEnabled);
    m_grid->show(v);
    m_paste->setEnabled(v.pasteEnabled);
}

void ExerciseLogDialog::copy() {
    run(ExerciseLogForm::Command::Copy);
}

void ExerciseLogDialog::cut() {
    run(ExerciseLogForm::Command::Cut);
}

void ExerciseLogDialog::paste() {
    run(ExerciseLogForm::Command::Paste);
}

void ExerciseLogDialog::selectAll() {
    run(ExerciseLogForm::Command::SelectAll);
    m_grid->setFocus();
}

void ExerciseLogDialog::deleteSelected() {
    const std::optional<ScreenMessage> question =
        m_form.confirmation(ExerciseLogForm::Command::Delete);
    if (!question || !present(*question)) {
        return;
    }
    run(ExerciseLogForm::Command::Delete);
}

void ExerciseLogDialog::editSelected() {
    std::optional<EditExerciseForm> edit = m_form.editSelected();
    if (!edit) {
        return;
    }
    if (m_runEdit) {
        m_runEdit(std::move(*edit));
    } else {
        EditExerciseDialog dialog(std::move(*edit), *m_notifier, this);
        dialog.setMessagePresenter(m_present);
        (void)dialog.exec();
    }
    redraw();
}

void ExerciseLogDialog::done(int result) {
    (void)showFailure(this, m_notifier->save(m_form.close()));
    QDialog::done(result);
}

}  // namespace nutrovex
