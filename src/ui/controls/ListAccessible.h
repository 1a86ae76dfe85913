#pragma once

class QObject;
class QAccessibleInterface;
class QString;

namespace nutrovex {

// A list of texts (QListWidget) as assistive technology reads it: its rows by their texts, the
// selected ones selected, and the current row focused only while the list has the keyboard focus
// (the platform's list says its current row has the focus even while the person types elsewhere).
QAccessibleInterface* listAccessible(const QString& className, QObject* object);

}  // namespace nutrovex
