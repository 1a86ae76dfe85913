#include "ui/logbook/JournalDialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// The note keeps CR LF line breaks; the editor shows plain line feeds.
QString shownNote(const std::string& stored) {
    return toQString(stored).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

std::optional<std::string> storedNote(const QString& shown) {
    QString text = shown;
    return fromQString(text.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
}

}  // namespace

JournalDialog::JournalDialog(JournalForm form, SessionNotifier& notifier, QWidget* parent)
    : LogbookScreen(notifier, parent, QStringLiteral("Daily Journal")),
      m_form(std::move(form)),
      m_editor(new QPlainTextEdit(this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this)) {
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* selectAll = edit->addAction(QStringLiteral("Select &All"));
    selectAll->setShortcut(QKeySequence::SelectAll);
    connect(selectAll, &QAction::triggered, this, [this] {
        m_editor->selectAll();
        m_editor->ensureCursorVisible();
    });
    QAction* copy = edit->addAction(QStringLiteral("&Copy"));
    copy->setShortcut(QKeySequence::Copy);
    connect(copy, &QAction::triggered, m_editor, &QPlainTextEdit::copy);
    QAction* cut = edit->addAction(QStringLiteral("Cu&t"));
    cut->setShortcut(QKeySequence::Cut);
    connect(cut, &QAction::triggered, m_editor, &QPlainTextEdit::cut);
    QAction* paste = edit->addAction(QStringLiteral("&Paste"));
    paste->setShortcut(QKeySequence::Paste);
    connect(paste, &QAction::triggered, m_editor, &QPlainTextEdit::paste);
    for (QAction* a : {selectAll, copy, cut, paste}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    }
    addOptionsMenu();

    // Cancel sits beside OK; like OK it only closes, the note is already kept.
    m_cancel->setAutoDefault(false);
    m_cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    if (auto* top = qobject_cast<QHBoxLayout*>(layout()->itemAt(0)->layout())) {
        top->insertWidget(1, m_cancel);
    }

    auto* caption = new QLabel(QStringLiteral("Daily Journal"), this);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    caption->setBuddy(m_editor);
    m_editor->setAccessibleName(QStringLiteral("Daily Journal"));
    m_editor->setTabChangesFocus(true);
    m_editor->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_editor->installEventFilter(this);
    body()->addWidget(caption);
    body()->addWidget(m_editor, 1);

    connect(m_editor, &QPlainTextEdit::textChanged, this, &JournalDialog::edited);
    connect(&notifier, &SessionNotifier::dataChanged, this, &JournalDialog::load);
    connect(&notifier, &SessionNotifier::userChanged, this, &JournalDialog::load);
    load();
    m_editor->setFocus();
}

void JournalDialog::done(int result) {
    (void)showFailure(this, notifier().save(m_form.close()));
    LogbookScreen::done(result);
}

void JournalDialog::load() {
    const JournalView v = m_form.view();
    dateLine()->setText(toQString(v.date));
    showText(shownNote(v.text));
}

void JournalDialog::showText(const QString& text) {
    m_loading = true;
    m_shown = text;
    m_editor->setPlainText(text);
    m_editor->moveCursor(QTextCursor::End);
    m_editor->ensureCursorVisible();
    m_loading = false;
}

void JournalDialog::edited() {
    if (m_loading) {
        return;
    }
    const QString text = m_editor->toPlainText();
    const std::optional<std::string> stored = storedNote(text);
    if (!stored || stored->size() > kMaxNoteChars) {
        // Past the limit, or a character a note cannot hold: the editor takes nothing more.
        const int caret = std::max(
            0, m_editor->textCursor().position() - static_cast<int>(text.size() - m_shown.size()));
        m_loading = true;
        m_editor->setPlainText(m_shown);
        QTextCursor c = m_editor->textCursor();
        c.setPosition(std::min(caret, static_cast<int>(m_shown.size())));
        m_editor->setTextCursor(c);
        m_loading = false;
        return;
    }
    m_shown = text;
    (void)showOutcome(this, notifier(), m_form.edit(JournalForm::Field::Note, *stored));
}

bool JournalDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_editor && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            key->modifiers() == Qt::NoModifier) {
            const Outcome outcome = m_form.command(JournalForm::Command::NewLine);
            showText(shownNote(m_form.view().text));
            (void)showOutcome(this, notifier(), outcome);
            return true;
        }
    }
    return LogbookScreen::eventFilter(watched, event);
}

}  // namespace nutrovex
