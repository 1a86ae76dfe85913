#include "ui/frame/MessageBoxes.h"

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

QMessageBox::Icon iconFor(MessageKind kind) {
    switch (kind) {
        case MessageKind::Question:
            return QMessageBox::Question;
        case MessageKind::Critical:
            return QMessageBox::Critical;
        case MessageKind::Warning:
            break;
    }
    return QMessageBox::Warning;
}

}  // namespace

std::unique_ptr<QMessageBox> makeMessageBox(QWidget* parent, const ScreenMessage& message) {
    auto box = std::make_unique<QMessageBox>(parent);
    box->setWindowTitle(toQString(message.caption));
    box->setText(toQString(message.text));
    box->setIcon(iconFor(message.kind));
    if (message.kind == MessageKind::Question) {
        box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box->setDefaultButton(QMessageBox::No);
    } else {
        box->setStandardButtons(QMessageBox::Ok);
    }
    return box;
}

bool showMessage(QWidget* parent, const ScreenMessage& message) {
    const std::unique_ptr<QMessageBox> box = makeMessageBox(parent, message);
    const int answer = box->exec();
    return message.kind == MessageKind::Question ? answer == QMessageBox::Yes
                                                 : answer == QMessageBox::Ok;
}

bool showFailure(QWidget* parent, const SessionStatus& status) {
    if (const std::optional<ScreenMessage> warning = status.warning()) {
        (void)showMessage(parent, *warning);
        return false;
    }
    return true;
}

}  // namespace nutrovex
