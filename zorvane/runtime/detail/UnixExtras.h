#pragma once
// What only some Unix systems have, and what happens where it is absent. Compiled with
// ZORVANE_PLAIN_UNIX, a system that has it does without, too.

#include <fcntl.h>
#include <sys/types.h>

#include <system_error>

namespace zorvane {

// How a folder is opened that may be searched but not listed; elsewhere it is out of reach.
#if defined(O_PATH) && !defined(ZORVANE_PLAIN_UNIX)
inline constexpr int kSearchFolder = O_PATH;
#elif defined(O_SEARCH)
inline constexpr int kSearchFolder = O_SEARCH;
#else
inline constexpr int kSearchFolder = O_RDONLY;
#endif

// An errno as callers compare it: a quota that is used up is a full disk to them.
[[nodiscard]] std::error_code ErrorOf(int number) noexcept;
// fsync(2), and past the disk's own cache where only another call goes there.
[[nodiscard]] int FlushToDisk(int file) noexcept;
// Access lists and extended attributes of `to` become those of `from`, but for what the system
// itself says of a file's bytes. Where there are no calls for it they are lost: success.
[[nodiscard]] std::error_code KeepExtendedAttributes(int from, int to);
// A name for a file of OpenUnnamed; -1 and errno as linkat(2).
[[nodiscard]] int NameUnnamed(int file, int folder, const char* name);
// A new file without a name in the folder; -1 and errno where that is not known.
[[nodiscard]] int OpenUnnamed(int folder, mode_t mode) noexcept;
// posix_fallocate(3): an error number, EOPNOTSUPP where that is not known.
[[nodiscard]] int ReserveSpace(int file, off_t size) noexcept;

}  // namespace zorvane
