#pragma once
// The forms are engine: no Qt.
#include <QObject>
