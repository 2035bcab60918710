#pragma once
// Growth: every test of every contender, timed with 50 to 10,000 items, without a window.
//
// The smaller sizes are timed more often, and the fastest time stands: what else the machine does
// only ever adds to one.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "program/demos/TimingRun.h"

namespace zorvane {

class Growth {
  public:
    static constexpr std::array<std::int32_t, 8> kSizes{50, 100, 200, 500, 1000, 2000, 5000, 10000};
    // No further size is begun after so many seconds.
    static constexpr double kPatience = 4;

    // Measures anew, from the smallest size on, and announces each size that has been timed.
    void Measure(TimingRun& run, const std::function<void()>& timed);
    // Test 1..8 of the contender in column 1..4 with kSizes[size] items; empty before it is timed.
    [[nodiscard]] std::optional<FineTime> At(int test, int column, std::size_t size) const;
    [[nodiscard]] bool Measured() const noexcept { return sizes_ != 0; }

  private:
    using Contenders = std::array<TimingResult, kContenders.size()>;

    std::array<Contenders, kSizes.size()> results_{};
    std::size_t sizes_ = 0;  // timed so far
};

}  // namespace zorvane
