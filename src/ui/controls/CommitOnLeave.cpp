#include "ui/controls/CommitOnLeave.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace nutrovex {

CommitOnLeave::CommitOnLeave(QLineEdit* edit, std::function<void(const QString&)> commit)
    : QObject(edit), m_edit(edit), m_commit(std::move(commit)) {
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::textEdited, this, [this] { m_edited = true; });
}

void CommitOnLeave::commitIfEdited() {
    if (!m_edited) {
        return;
    }
    // Cleared first: what the commit shows (a refusal) takes the focus from the field again.
    m_edited = false;
    m_commit(m_edit->text());
}

bool CommitOnLeave::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_edit) {
        if (event->type() == QEvent::FocusOut) {
            // Another window or a popup taking the focus is not leaving the field. Otherwise the
            // value is handed on once the focus has moved, so that a refusal can give the field
            // the focus back with its text selected.
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
                QMetaObject::invokeMethod(this, &CommitOnLeave::commitIfEdited,
                                          Qt::QueuedConnection);
            }
        } else if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                commitIfEdited();
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace nutrovex
