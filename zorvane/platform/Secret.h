#pragma once
// Secret: bits that differ from process to process, for hashes that nobody can solve for.

#include <cstdint>

#include "zorvane/platform/Build.h"

namespace zorvane {

// Other bits at every call: from the system's source of randomness, and where that fails from what
// is hard to guess. May be called before main.
[[nodiscard]] std::uint64_t SecretBits() noexcept;

// What numbers are hashed with: the same at every call in one process.
struct HashSecret {
    std::uint64_t Added;
    std::uint64_t Factor;  // odd

    [[nodiscard]] std::uint64_t Of(std::uint64_t number) const noexcept {
        return (number ^ Added) * Factor;
    }
};
[[nodiscard]] ZORVANE_EXPORT const HashSecret& TheHashSecret() noexcept;

}  // namespace zorvane
