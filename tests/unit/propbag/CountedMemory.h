#pragma once
// The memory of this test program: how much is in use, and an allocation that fails on request.

#include <cstddef>

namespace zorvane::memory {

[[nodiscard]] std::size_t InUse() noexcept;  // bytes asked for and not yet given back
[[nodiscard]] std::size_t Peak() noexcept;   // the greatest InUse() since ResetPeak
void ResetPeak() noexcept;

// While one lives, the k-th allocation from its birth (counted from 1) throws std::bad_alloc.
class FailAllocation {
  public:
    explicit FailAllocation(long k) noexcept;
    FailAllocation(const FailAllocation&) = delete;
    FailAllocation& operator=(const FailAllocation&) = delete;
    ~FailAllocation();
    [[nodiscard]] static bool Happened() noexcept;
};

}  // namespace zorvane::memory
