#pragma once

#include "core/ScreenMessage.h"

namespace nutrovex {

// A Yes/No question: the operation runs only on Yes. The message's kind is the icon shown.
struct Confirmation {
    ScreenMessage message;
    bool noIsDefault = false;

    friend bool operator==(const Confirmation&, const Confirmation&) = default;
};

}  // namespace nutrovex
