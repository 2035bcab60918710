#pragma once
// StateFolder: where the program keeps what it remembers.

#include <filesystem>

namespace zorvane {

// The program's directory; but where the program was installed for many users, which a file says
// that was installed with it (per-user, in the folder of shared data), the user's own folder for
// state, which is made where there is none: $XDG_STATE_HOME/zorvane or ~/.local/state/zorvane, and
// what the system names elsewhere.
[[nodiscard]] std::filesystem::path StateFolder(const std::filesystem::path& programFolder);

}  // namespace zorvane
