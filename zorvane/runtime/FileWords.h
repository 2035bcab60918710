#pragma once
/// \file
/// Whole files of 16-bit words, little end first, with nothing before or after them.
///
/// Only regular files are touched, through links where there are any; a FIFO or a device is never
/// waited for. A file is as long as the system says when it is opened: those that a system makes up
/// while they are read, as below /proc, are empty here. A std::filesystem::path reaches the system
/// unit for unit, also where it is no valid text; a Text goes in UTF-8 (on Windows as its units).
/// Nothing here raises: what memory has run out for is a failure like any other. Any threads and
/// processes at once may read and save.

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane::modZorvane {

/// What a file holds, or why it does not say.
struct LoadedWords {
    Variant Words;                ///< as ReadFileWords gives them
    std::uint64_t FileBytes = 0;  ///< of all of the file
    std::error_code Error;        ///< no_such_file_or_directory, permission_denied, is_a_directory,
                                  // invalid_argument (neither a file nor a folder) ...
};

/// Whether SaveFileWords would find a file that it may read and write, or a folder that takes one;
/// else why not. A full disk shows itself only when saving.
[[nodiscard]] ZORVANE_EXPORT std::error_code CheckFileWords(
    const std::filesystem::path& path) noexcept;

/// @{
/// The whole file, or its first words, at most `most`: one array for them, O(words). After a
/// failure half-way there are words with an Error, and those not read are 0. file_too_large: more
/// than 2^31 - 1 words were to be read.
[[nodiscard]] ZORVANE_EXPORT LoadedWords LoadFileWords(const std::filesystem::path& path) noexcept;
[[nodiscard]] ZORVANE_EXPORT LoadedWords LoadFileWords(const std::filesystem::path& path,
                                                       std::int32_t most) noexcept;
/// @}

/// The file as an array of 16-bit integers from 0. A file of n bytes gives `(n - 1) \ 2 + 1` words
/// (one word, 0, for an empty file); an odd last byte is the low half of the last word. Empty when
/// there is no such file, it is not a regular one, it cannot be opened or it has more than 2^31 - 1
/// words. Where reading fails half-way the words not read are 0. O(n), one array.
[[nodiscard]] ZORVANE_EXPORT Variant ReadFileWords(const Text& path);

/// How words are saved.
struct SaveOptions {
    bool CutOldTail = false;  ///< the file then ends with the words
};

/// The file then holds `words` followed by whatever it held behind them: unless that is asked for,
/// it is never cut short. A file that already begins with the words is not written again, and one
/// that may not be read and written is left alone. Success, or why the file is what it was:
/// no_space_on_device (a quota, too), io_error, permission_denied, operation_not_permitted (the
/// file is marked as one that never changes), read_only_file_system, is_a_directory (also for a
/// path that ends in a separator, saved or loaded), no_such_file_or_directory (of a folder; for no
/// path at all), invalid_argument (not an array of 16-bit integers; neither a file nor a folder),
/// device_or_resource_busy (somebody else writes in it for long), resource_unavailable_try_again
/// (others came in between time and again)...
///
/// The new file is assembled beside the old one and takes its place, owner, mode, access list and
/// extended attributes in one step: whoever reads, or is left with the disk after a crash, has the
/// old file or the new one. Success says that the new one is on the disk; io_error may also say
/// that this is not certain of its place in the folder. Where no new file can take the place (a
/// folder that may not be written, a file of several names, more than 64 MiB behind the words) the
/// file is written in place, one writer after the other and its first two words last: a crash then
/// leaves a file that begins with two zero words. What a killed process leaves beside the file is
/// removed by the next call for that folder. What each system keeps of this stands in
/// docs/behaviour.md.
[[nodiscard]] ZORVANE_EXPORT std::error_code SaveFileWords(const std::filesystem::path& path,
                                                           const Variant& words,
                                                           SaveOptions options = {}) noexcept;

/// SaveFileWords, of which nothing is said.
ZORVANE_EXPORT void WriteFileWords(const Text& path, const Variant& words);

}  // namespace zorvane::modZorvane
