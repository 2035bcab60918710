#pragma once
// ProgramFolder: the directory in which the program lies.

#include <filesystem>

namespace zorvane {

// As the system names it, also where that is no valid text. Needs a QApplication.
[[nodiscard]] std::filesystem::path ProgramFolder();

}  // namespace zorvane
