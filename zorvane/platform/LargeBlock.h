#pragma once
// LargeBlock: memory for arrays, records and indexes. Large blocks ask the system for large pages:
// touching fresh memory page by page costs more than what is done with it, and so does finding the
// page of every place that is reached at random.

#include <cstddef>

#include "zorvane/platform/Build.h"

namespace zorvane {

// From how many bytes on a block is large: below, what is left of its last page weighs more.
inline constexpr std::size_t kLargeBlock = std::size_t{4} << 20;

// `bytes` of memory, aligned for any scalar. Throws std::bad_alloc.
[[nodiscard]] ZORVANE_EXPORT void* AllocateBlock(std::size_t bytes);
// Gives back what AllocateBlock(bytes) gave, or nothing where block is null.
ZORVANE_EXPORT void FreeBlock(void* block, std::size_t bytes) noexcept;

}  // namespace zorvane
