#pragma once

#include <span>
#include <string>
#include <string_view>

namespace nutrovex::tool {

// Exit codes of every command.
inline constexpr int kExitOk = 0;
inline constexpr int kExitDataError = 1;  // the data could not be read or written
inline constexpr int kExitUsage = 2;

// Options before the command.
struct GlobalOptions {
    std::string root;  // --root DIR, else $NUTROVEX_ROOT, else the per-user data folder
};

using Args = std::span<const std::string>;

// Every command takes the arguments after its name and returns an exit code.
int runEval(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
