#pragma once

#include <functional>

class QComboBox;

namespace nutrovex {

// Up and Down in a list that shows no choice pick the choice start() names, as if the person had
// chosen it (activated is emitted), instead of the list's first entry or nothing at all.
void startBlankListAt(QComboBox* list, std::function<int()> start);

}  // namespace nutrovex
