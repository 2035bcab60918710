#pragma once
// Allocations that are counted, and fail on request. Link AllocationFaults.cpp, which replaces
// operator new.

#include <cstdint>

namespace zorvane {

// The allocation with this number from now on (1 is the next) throws std::bad_alloc; 0: none does.
void FailAllocation(std::int64_t number) noexcept;
// Whether the failure asked for last has happened.
[[nodiscard]] bool AllocationHasFailed() noexcept;
// Allocations since the start of the program.
[[nodiscard]] std::int64_t AllocationCount() noexcept;
// Those of this thread that it has not given back.
[[nodiscard]] std::int64_t AllocationsHeld() noexcept;
// Bytes allocated since the start of the program, freed ones included.
[[nodiscard]] std::int64_t AllocatedBytes() noexcept;

}  // namespace zorvane
