#pragma once

#include "forms/logbook/JournalForm.h"
#include "ui/logbook/LogbookScreen.h"

class QPlainTextEdit;

namespace nutrovex {

// The daily journal of the logbook's current date: a thin view of JournalForm. The note is kept
// as it is typed, at most 512 characters, and Enter always starts a new line at its end. Cancel
// undoes nothing.
class JournalDialog : public LogbookScreen {
    Q_OBJECT

public:
    JournalDialog(JournalForm form, SessionNotifier& notifier, QWidget* parent);

    void done(int result) override;

    [[nodiscard]] QPlainTextEdit* editor() const { return m_editor; }
    [[nodiscard]] QPushButton* cancelButton() const { return m_cancel; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void edited();
    void showText(const QString& text);

    JournalForm m_form;
    QPlainTextEdit* m_editor;
    QPushButton* m_cancel;
    QString m_shown;  // the editor's last accepted text
    bool m_loading = false;
};

}  // namespace nutrovex
