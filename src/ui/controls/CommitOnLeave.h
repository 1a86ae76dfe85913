#pragma once

#include <QObject>
#include <functional>

class QLineEdit;

namespace nutrovex {

// Hands a line edit's text on once its value is complete: when the person leaves the field (just
// after the focus moved) or presses Enter, and when the screen closes (commitIfEdited()). Typing
// alone hands on nothing, so a value that is refused or half-typed is never stored.
class CommitOnLeave : public QObject {
    Q_OBJECT

public:
    CommitOnLeave(QLineEdit* edit, std::function<void(const QString& text)> commit);

    // Hands the text on when the person typed into the field since it was last handed on.
    void commitIfEdited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* m_edit;
    std::function<void(const QString&)> m_commit;
    bool m_edited = false;
};

}  // namespace nutrovex
