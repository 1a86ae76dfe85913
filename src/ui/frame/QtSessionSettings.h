#pragma once

#include <QSettings>
#include <memory>

#include "session/Session.h"

namespace nutrovex {

// The remembered current user in the program's settings: organisation "Zerbu", application
// "Nutrovex", "CurrentUser/Name". A root given on the command line or in the environment keeps
// its own settings file, so every such root is self-contained.
// The program's settings store: a file inside the data root when the root was given, so every
// root is self-contained, else the person's own settings.
[[nodiscard]] std::unique_ptr<QSettings> openProgramSettings(const DataRootChoice& root);

class QtSessionSettings final : public SessionSettings {
public:
    explicit QtSessionSettings(const DataRootChoice& root);

    [[nodiscard]] std::string currentUserName() const override;
    void setCurrentUserName(std::string_view name) override;

private:
    std::unique_ptr<QSettings> m_settings;
};

}  // namespace nutrovex
