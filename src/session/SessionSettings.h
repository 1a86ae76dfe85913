#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace nutrovex {

// Where the data lives: --root DIR, else $NUTROVEX_ROOT, else the per-user data folder. `given`
// tells the program to keep its settings inside the root, so every root is self-contained.
struct DataRootChoice {
    std::filesystem::path path;
    bool given = false;
};
[[nodiscard]] DataRootChoice chooseDataRoot(std::string_view rootOption);

// The remembered current user, kept by the program's settings (an absent value reads as "").
class SessionSettings {
public:
    virtual ~SessionSettings() = default;
    [[nodiscard]] virtual std::string currentUserName() const = 0;
    virtual void setCurrentUserName(std::string_view name) = 0;
};

// Settings that live as long as the object: for the tool and for tests.
class MemorySettings final : public SessionSettings {
public:
    [[nodiscard]] std::string currentUserName() const override { return m_name; }
    void setCurrentUserName(std::string_view name) override { m_name = name; }

private:
    std::string m_name;
};

}  // namespace nutrovex
