#pragma once
// Saving bytes over a file so that nobody ever sees half of them.

#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>

namespace zorvane {

// Success when the path leads to a regular file that may be written, or to none in a folder that
// takes one; else why not. Raises only what an allocation raises.
[[nodiscard]] std::error_code MaySaveOverFile(const std::filesystem::path& path);

// What becomes of bytes behind those that are saved.
enum class OldTail { Stays, Cut };

// The file then holds `bytes` followed by what it held behind them, or is what it was. See
// modZorvane::SaveFileWords for what is kept and where. Raises only what an allocation raises, and
// then the file is what it was.
[[nodiscard]] std::error_code SaveOverFile(const std::filesystem::path& path,
                                           std::span<const std::byte> bytes, OldTail tail);

}  // namespace zorvane
