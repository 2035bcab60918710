#pragma once
// What this floor asks of the system; PosixSystem.cpp and WindowsSystem.cpp answer, one in a build.

#include <cstddef>
#include <cstdint>
#include <ctime>

namespace zorvane {

// The time by the local calendar and clock. Any thread may ask at any time.
[[nodiscard]] std::tm LocalTime(std::time_t time);

// Addresses; a stack grows towards the lower one. Both are 0 where the system does not tell.
struct StackBounds {
    std::uintptr_t End = 0;
    std::uintptr_t Begin = 0;
};
[[nodiscard]] StackBounds StackOfThisThread() noexcept;

// A wish to lay the block out in large pages: where there are none, nothing else changes.
void WishForLargePages(void* block, std::size_t bytes) noexcept;

}  // namespace zorvane
