#pragma once
// StackLeft: how much of its stack a thread has left, so that what nests deeply can stop in time.

#include <cstddef>
#include <optional>

namespace zorvane {

// What nests leaves so many bytes to the code within, which may be anyone's, and to an error on its
// way out.
inline constexpr std::size_t kStackReserve = std::size_t{64} << 10;

// Bytes from the caller to the end of its thread's stack; nothing where the system does not tell,
// and on a stack that a program made for itself. A thread's first call asks the system, others take
// a few instructions.
[[nodiscard]] std::optional<std::size_t> StackLeft() noexcept;

}  // namespace zorvane
