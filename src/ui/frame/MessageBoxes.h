#pragma once

#include <QMessageBox>
#include <memory>

#include "core/ScreenMessage.h"
#include "session/SessionStatus.h"

class QWidget;

namespace nutrovex {

// The message box a ScreenMessage describes: its caption, text and icon (Warning, Question,
// Critical); a Question offers Yes and No with No as the default, the others OK.
[[nodiscard]] std::unique_ptr<QMessageBox> makeMessageBox(QWidget* parent,
                                                          const ScreenMessage& message);

// Shows the message modally; true when the person answered Yes (a Question) or confirmed it.
bool showMessage(QWidget* parent, const ScreenMessage& message);

// Shows a failed session operation (which file, and why) as a warning; nothing when it went well.
// Returns whether it went well.
bool showFailure(QWidget* parent, const SessionStatus& status);

}  // namespace nutrovex
