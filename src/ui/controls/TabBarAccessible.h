#pragma once

class QObject;
class QAccessibleInterface;
class QString;

namespace nutrovex {

// A tab strip as assistive technology reads it: its tabs by their texts, the current one
// selected, and focused only while the strip itself has the keyboard focus (a strip that only
// shows which screen is open must not claim the focus another control has).
QAccessibleInterface* tabBarAccessible(const QString& className, QObject* object);

// A plain container that passes the focus on (a scroll area's viewport, a button box) as a
// reader sees it: the focus is its proxy's, so it never says it has the focus itself.
QAccessibleInterface* proxyAccessible(const QString& className, QObject* object);

}  // namespace nutrovex
