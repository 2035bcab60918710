#pragma once
/// \class zorvane::Random
/// Uniform numbers in [0, 1), the same sequence on every machine and at every start.
///
/// Threads: all may draw from one at once; each number of the sequence then goes to one of them.

#include <cstdint>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/SharedCount.h"

namespace zorvane {

class ZORVANE_EXPORT Random {
  public:
    /// The next number: k / 2^24 for a whole k below 2^24.
    float Next() noexcept;

  private:
    SharedCount<std::uint64_t> state_{0x5EED0F2026u};  // any fixed start; nothing seeds it
};

/// The one generator of the program; everything that draws shares its sequence.
[[nodiscard]] ZORVANE_EXPORT Random& ProgramRandom() noexcept;

}  // namespace zorvane
