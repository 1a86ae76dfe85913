#pragma once

#include <QApplication>
#include <QCursor>

namespace nutrovex {

// Shows the wait cursor for as long as the guard lives, around loads and saves. Guards nest.
class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace nutrovex
