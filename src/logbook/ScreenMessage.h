#pragma once

#include <cstdint>
#include <string>

namespace nutrovex {

// The icon of a message box: refusals warn, confirmations ask, fatal load errors stop.
enum class MessageKind : uint8_t { Warning, Question, Critical };

// A message box as data: a screen shows it; for a Question the operation runs only on Yes.
struct ScreenMessage {
    std::string text;
    std::string caption;
    MessageKind kind = MessageKind::Warning;

    friend bool operator==(const ScreenMessage&, const ScreenMessage&) = default;
};

// What the other open screens must hear after an operation: redraw (data changed), a day was
// created by typing into it, or the personal information was reset.
struct Notices {
    bool dataChanged = false;
    bool dayCreated = false;
    bool personalInfoReset = false;

    Notices& operator|=(const Notices& other) {
        dataChanged = dataChanged || other.dataChanged;
        dayCreated = dayCreated || other.dayCreated;
        personalInfoReset = personalInfoReset || other.personalInfoReset;
        return *this;
    }
    friend bool operator==(const Notices&, const Notices&) = default;
};

}  // namespace nutrovex
