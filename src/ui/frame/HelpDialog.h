#pragma once

#include "forms/frame/HelpForm.h"
#include "ui/frame/ScreenDialog.h"

class QPlainTextEdit;

namespace nutrovex {

// The help screen: one text at a time, chosen by the buttons under it and the menu; it opens on
// the quick help.
class HelpDialog : public ScreenDialog {
    Q_OBJECT

public:
    explicit HelpDialog(HelpForm form, QWidget* parent = nullptr);

    [[nodiscard]] QPlainTextEdit* textBox() const { return m_text; }
    // Shows a command's text, as its button or menu entry does.
    void run(HelpForm::Command command);

private:
    HelpForm m_form;
    QPlainTextEdit* m_text;
};

}  // namespace nutrovex
