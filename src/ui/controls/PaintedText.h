#pragma once

#include <QStringList>

class QAccessibleInterface;
class QObject;
class QString;

namespace nutrovex {

// A widget that paints its text itself names the lines it shows, so that a reader gets them: each
// is read as a line of static text inside the widget.
class PaintedText {
public:
    virtual ~PaintedText() = default;
    [[nodiscard]] virtual QStringList shownLines() const = 0;
};

QAccessibleInterface* paintedTextAccessible(const QString& className, QObject* object);

}  // namespace nutrovex
