#pragma once

#include <QString>

class QAbstractButton;
class QLabel;

namespace nutrovex {

// The name a reader hears for a figure, a date or a sentence shown under a caption: "Weight:
// 174 lbs", "Start Date: Thursday July 25, 2002". A text that already holds its caption ("Goal:
// -316 cal") is the name as it stands.
[[nodiscard]] QString figureName(const QString& caption, const QString& shown);

// Shows the text and names the widget with its caption in front; for figures that change.
void showFigure(QLabel* label, const QString& caption, const QString& text);
void showFigure(QAbstractButton* button, const QString& caption, const QString& text);
// The same with the caption given once, when the label is made: a figure set in many places.
void setFigureCaption(QLabel* label, const QString& caption);
void showFigure(QLabel* label, const QString& text);

// A control's name begins with what it shows, so a person can say what they see, then says what
// it does: "Step 4, Logbook".
[[nodiscard]] QString controlName(const QString& shown, const QString& what);

}  // namespace nutrovex
