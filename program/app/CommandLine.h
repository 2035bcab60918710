#pragma once
// CommandLine: what the program is asked for beside what the toolkit takes for itself.

#include <optional>

namespace zorvane {

struct CommandLine {
    std::optional<int> End;      // the status to end with; nothing where the windows are wanted
    bool NamesPlatform = false;  // whether it says where the windows are shown
};

// Answers --help and --version on the output, and in one line on the error output an option that
// nobody knows, one that lacks its value or a surplus word. Needs no display and no application
// object, and leaves none.
[[nodiscard]] CommandLine ReadCommandLine(int argc, char** argv);

}  // namespace zorvane
