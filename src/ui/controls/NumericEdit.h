#pragma once

#include <QLineEdit>

#include "controls/NumericField.h"

namespace nutrovex {

// The numeric entry field: types only digits, one point and a leading minus, shows the bare
// number while focused and the rounded, clamped, decorated number otherwise. Screens read and
// write the number, never the text.
class NumericEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit NumericEdit(QWidget* parent = nullptr);

    void setValue(double value);
    [[nodiscard]] double value() const { return m_field.value(); }
    // False after the person left the field empty.
    [[nodiscard]] bool hasValue() const { return m_field.hasValue(); }
    void setFormat(uint16_t decimals, bool grouping);
    // The range, prefix and suffix are set before the field is shown; they apply at the next
    // display of the number.
    void setRange(double minimum, double maximum) { m_field.setRange(minimum, maximum); }
    // Where Up and Down start in an empty field (the range's minimum unless set).
    void setStartValue(double value) { m_field.setStartValue(value); }
    void setPrefix(const QString& prefix);
    void setSuffix(const QString& suffix);
    // Reads the typed text as leaving the field does; for a dialog closed with the Enter key
    // while the field still has the focus.
    void commit();

    [[nodiscard]] const NumericField& field() const { return m_field; }

Q_SIGNALS:
    // The number was read from the text after the person left the field.
    void valueCommitted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] std::size_t selectionStartPosition() const;
    void showField();

    NumericField m_field;
};

}  // namespace nutrovex
