#pragma once
// Secret: bits that differ from process to process, for hashes that nobody can solve for.

#include <cstdint>

namespace zorvane {

// Other bits at every call: from the system's source of randomness, and where that fails from what
// is hard to guess. May be called before main.
[[nodiscard]] std::uint64_t SecretBits() noexcept;

}  // namespace zorvane
