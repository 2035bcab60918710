#pragma once
// Saving bytes over a file so that nobody ever sees half of them.

#include <cstddef>
#include <span>
#include <string>

namespace zorvane {

// Whether the path leads to a regular file that may be written, or to none in a directory that
// takes one. Raises only what an allocation raises.
[[nodiscard]] bool MaySaveOverFile(const std::string& path);

// The file then holds `bytes` followed by what it held behind them, or is what it was. See
// modZorvane::WriteFileWords for what is kept and where. Raises only what an allocation raises, and
// then the file is what it was.
void SaveOverFile(const std::string& path, std::span<const std::byte> bytes);

}  // namespace zorvane
