#include "ui/controls/NumericEdit.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

// The field's text in 8 bits; a character Windows-1252 cannot hold becomes "?", which ends the
// number like any other junk.
std::string eightBit(const QString& text) {
    if (auto bytes = fromQString(text)) {
        return *bytes;
    }
    std::string out;
    for (const QChar ch : text) {
        const auto one = fromQString(QString(ch));
        out += one && one->size() == 1 ? (*one)[0] : '?';
    }
    return out;
}

}  // namespace

NumericEdit::NumericEdit(QWidget* parent) : QLineEdit(parent) {
    m_field.show(true);
    showField();
}

void NumericEdit::showField() {
    setText(toQString(m_field.text()));
}

void NumericEdit::setValue(double value) {
    m_field.setValue(value);
    if (hasFocus()) {
        m_field.show(false);
    }
    showField();
}

void NumericEdit::setFormat(uint16_t decimals, bool grouping) {
    m_field.setFormat(decimals, grouping);
    if (hasFocus()) {
        m_field.show(false);
    }
    showField();
}

void NumericEdit::setPrefix(const QString& prefix) {
    m_field.setPrefix(eightBit(prefix));
}

void NumericEdit::setSuffix(const QString& suffix) {
    m_field.setSuffix(eightBit(suffix));
}

std::size_t NumericEdit::selectionStartPosition() const {
    return static_cast<std::size_t>(hasSelectedText() ? selectionStart() : cursorPosition());
}

void NumericEdit::keyPressEvent(QKeyEvent* event) {
    // Up and Down step the number, so it can be set without typing.
    if ((event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) &&
        (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        m_field.setText(eightBit(text()));
        m_field.step(event->key() == Qt::Key_Up ? 1 : -1);
        showField();
        selectAll();
        event->accept();
        return;
    }
    const QString typed = event->text();
    if (typed.isEmpty()) {
        QLineEdit::keyPressEvent(event);  // arrows, Delete and the like carry no character
        return;
    }
    if (typed.size() == 1) {
        const std::string c = eightBit(typed);
        if (NumericField::acceptsCharacter(c[0], eightBit(text()), selectionStartPosition())) {
            QLineEdit::keyPressEvent(event);
        } else {
            event->accept();  // dropped
        }
        return;
    }
    // Several characters at once (an input method): each passes the filter on its own.
    for (const QChar ch : typed) {
        const std::string c = eightBit(QString(ch));
        if (NumericField::acceptsCharacter(c[0], eightBit(text()), selectionStartPosition())) {
            insert(QString(ch));
        }
    }
    event->accept();
}

void NumericEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_field.setText(eightBit(text()));
    m_field.enter();
    showField();
    // After the click that gave the focus has placed the cursor.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void NumericEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    commit();
}

void NumericEdit::commit() {
    m_field.setText(eightBit(text()));
    m_field.leave();
    if (hasFocus()) {
        m_field.show(false);
    }
    showField();
    Q_EMIT valueCommitted();
}

}  // namespace nutrovex
