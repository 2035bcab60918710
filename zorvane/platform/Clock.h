#pragma once
// The clock that the demonstration reads: seconds since local midnight, in single precision.

#include <functional>

namespace zorvane {

// Steps by 4 to 8 ms in the later hours of a day: a float has 24 bits for up to 86,400 seconds.
[[nodiscard]] float SecondsSinceMidnight();

// What code takes that must be testable without waiting.
using SecondsClock = std::function<float()>;

}  // namespace zorvane
