#pragma once
// LargeBlock: memory for arrays. Large blocks ask the system for large pages, since touching fresh
// memory page by page costs more than what is done with it.

#include <cstddef>

namespace zorvane {

// `bytes` of memory, aligned for any scalar. Throws std::bad_alloc.
[[nodiscard]] void* AllocateBlock(std::size_t bytes);
// Gives back what AllocateBlock(bytes) gave.
void FreeBlock(void* block, std::size_t bytes) noexcept;

}  // namespace zorvane
