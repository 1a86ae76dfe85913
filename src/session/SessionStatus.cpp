#include "session/SessionStatus.h"

namespace nutrovex {

std::string SessionStatus::message() const {
    std::string text;
    for (const std::string& f : failures) {
        if (!text.empty()) {
            text += '\n';
        }
        text += f;
    }
    return text;
}

std::optional<ScreenMessage> SessionStatus::warning() const {
    if (ok()) {
        return std::nullopt;
    }
    return ScreenMessage{message(), "Nutrovex", MessageKind::Warning};
}

void SessionStatus::add(const StorageStatus& status) {
    if (!status.ok()) {
        failures.push_back(status.message());
    }
}

}  // namespace nutrovex
