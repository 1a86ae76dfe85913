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

#include "core/CalendarDate.h"
#include "logbook/ExerciseLog.h"
#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/exercise/EditExerciseDialog.h"
#include "ui/exercise/ExercisePicker.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

constexpr int kColumns = 3;  // name, minutes, calories

}  // namespace

ExerciseGrid::ExerciseGrid(ExerciseLog& log, QWidget* parent) : MWGridWidget(parent), m_log(&log) {
    setAccessibleName(QStringLiteral("Exercises"));
    grid().setColumnCount(kColumns);
    grid().setFixedRows(1);
    grid().setDefaultRowHeight(fontMetrics().height() + 8);
    reload();
}

void ExerciseGrid::reload() {
    const ExerciseList* list = m_log->exercises();
    const int rows = list ? static_cast<int>(list->size()) : 0;
    grid().setRowCount(1 + rows);
    grid().setSelectAll(false);
    if (grid().current().row > rows || grid().current().row < 1) {
        (void)grid().selectCell(rows > 0 ? 1 : 0, 0);
    }
    grid().resetAnchor();
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
    const ExerciseList* list = m_log->exercises();
    const auto index = static_cast<std::size_t>(row - 1);
    if (!list || index >= list->size()) {
        return {};
    }
    const ExerciseEntry& e = (*list)[index];
    switch (column) {
        case 0:
            return toQString(e.name.view());
        case 1:
            return QString::number(e.minutes);
        case 2:
            return QString::number(e.calories);
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

std::vector<Position> ExerciseGrid::selectedRows() const {
    const ExerciseList* list = m_log->exercises();
    const int count = list ? static_cast<int>(list->size()) : 0;
    std::vector<Position> rows;
    int first = std::min(grid().anchor().row, grid().current().row);
    int last = std::max(grid().anchor().row, grid().current().row);
    if (grid().selectAll()) {
        first = 1;
        last = count;
    }
    for (int r = std::max(first, 1); r <= std::min(last, count); ++r) {
        rows.push_back(static_cast<Position>(r - 1));
    }
    return rows;
}

void ExerciseGrid::selectAllRows() {
    grid().setSelectAll(true);
    refresh();
}

void ExerciseGrid::selectRow(int row) {
    grid().setSelectAll(false);
    selectCell(row + 1, 0);
    grid().resetAnchor();
    refresh();
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
    if (event->key() != Qt::Key_Delete) {
        grid().setSelectAll(false);
    }
    MWGridWidget::keyPressEvent(event);
}

ExerciseLogDialog::ExerciseLogDialog(SessionNotifier& notifier, QWidget* parent)
    : QDialog(parent),
      m_notifier(&notifier),
      m_exercises(std::make_unique<ExerciseLog>(notifier.session().days(),
                                                notifier.session().exerciseClipboard())),
      m_date(new QLabel(this)),
      m_picker(new ExercisePicker(
          m_exercises->form, notifier.session().days(),
          [this](const ScreenMessage& m) { return present(m); }, this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_log(new QPushButton(QStringLiteral("&Log"), this)),
      m_grid(new ExerciseGrid(*m_exercises, this)) {
    setWindowTitle(QStringLiteral("Exercise Log"));
    setModal(true);
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
    connect(m_picker, &ExercisePicker::editsChanged, this,
            [this] { m_log->setEnabled(m_exercises->form.logEnabled()); });
    connect(m_log, &QPushButton::clicked, this, [this] {
        const Outcome outcome = m_exercises->log();
        if (outcome.message) {
            (void)present(*outcome.message);
            return;
        }
        apply(outcome.notices);
        m_picker->showForm();
        const ExerciseList* list = m_exercises->exercises();
        if (list && !list->empty()) {
            m_grid->selectRow(static_cast<int>(list->size()) - 1);
        }
    });
    connect(m_grid, &ExerciseGrid::editRequested, this, &ExerciseLogDialog::editSelected);
    using Signal = void (SessionNotifier::*)();
    for (const Signal signal : {&SessionNotifier::dataChanged, &SessionNotifier::userChanged,
                                &SessionNotifier::dayCreated}) {
        connect(m_notifier, signal, this, &ExerciseLogDialog::redraw);
    }
    redraw();
    m_log->setEnabled(m_exercises->form.logEnabled());
    m_picker->typeCombo()->setFocus();
}

ExerciseLogDialog::~ExerciseLogDialog() = default;

void ExerciseLogDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void ExerciseLogDialog::setEditRunner(std::function<void(Position)> run) {
    m_runEdit = std::move(run);
}

bool ExerciseLogDialog::present(const ScreenMessage& message) {
    return m_present ? m_present(message) : showMessage(this, message);
}

void ExerciseLogDialog::apply(const Notices& notices) {
    showFailure(this, m_notifier->apply(notices));
    redraw();
}

void ExerciseLogDialog::redraw() {
    m_date->setText(toQString(longDateText(m_notifier->session().days().currentDate())));
    m_grid->reload();
    m_paste->setEnabled(!m_notifier->session().exerciseClipboard().empty());
}

void ExerciseLogDialog::copy() {
    const std::vector<Position> rows = m_grid->selectedRows();
    m_exercises->copy(rows);
    redraw();
}

void ExerciseLogDialog::cut() {
    const std::vector<Position> rows = m_grid->selectedRows();
    if (!rows.empty()) {
        apply(m_exercises->cut(rows));
    }
}

void ExerciseLogDialog::paste() {
    const Outcome outcome = m_exercises->paste();
    apply(outcome.notices);
    if (outcome.message) {
        (void)present(*outcome.message);
    }
}

void ExerciseLogDialog::selectAll() {
    m_grid->selectAllRows();
    m_grid->setFocus();
}

void ExerciseLogDialog::deleteSelected() {
    const std::vector<Position> rows = m_grid->selectedRows();
    if (rows.empty() || !present(confirmDeleteExercises())) {
        return;
    }
    apply(m_exercises->deleteRows(rows));
}

void ExerciseLogDialog::editSelected() {
    const std::vector<Position> rows = m_grid->selectedRows();
    if (rows.empty()) {
        return;
    }
    if (m_runEdit) {
        m_runEdit(rows.front());
    } else {
        EditExerciseDialog dialog(*m_notifier, this, rows.front());
        dialog.setMessagePresenter(m_present);
        (void)dialog.exec();
    }
    redraw();
}

}  // namespace nutrovex
