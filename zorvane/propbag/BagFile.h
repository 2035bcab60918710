#pragma once
/// \file
/// BagFile: a bag out of a file that may be anything and however large.

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "zorvane/platform/Build.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {

struct BagLoading {
    /// As of LoadFileWords, but never not_enough_memory; success, whatever is in the file.
    std::error_code Error;
    std::uint64_t FileBytes = 0;  ///< of all of the file
    bool Damaged = false;  ///< what was read is no whole bag; an empty file is none of either
    bool Foreign = false;  ///< the file goes on where no whole bag was found: the rest was not read
};

/// The bag becomes what the file's words make of it (SetContents). After any Error it is empty, as
/// where there is no such file: what it held is of no file that could be read. Where reading failed
/// half-way, the entries in front are in it. Read are the first `atFirst` words and then, in
/// growing steps, as many as the stream can need: of a file that does not begin as a bag, or is
/// damaged where its rest would not mend it, no more than that, and of one that begins with a bag
/// at most four times its words. O(words read). Raises nothing but std::bad_alloc, whatever memory
/// ran out for; then the bag is what it was.
ZORVANE_EXPORT BagLoading LoadBagFile(const std::filesystem::path& path, ZVPropertyBag& bag,
                                      std::int32_t atFirst = 1 << 16);

}  // namespace zorvane
