#pragma once
// Growth: every test of every contender, timed with 50 to 10,000 items, without a window.
//
// All sizes are timed in rounds, and the fastest time stands: what else the machine does only ever
// adds to one.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "program/demos/TimingRun.h"

namespace zorvane {

class Growth {
  public:
    static constexpr std::array<std::int32_t, 8> kSizes{50, 100, 200, 500, 1000, 2000, 5000, 10000};
    static constexpr int kRounds = 12;
    static constexpr double kPatience = 2;  // no further size is begun after so many seconds

    // Measures anew. Announces each size of the first round, from the smallest on, and then each
    // round.
    void Measure(TimingRun& run, const std::function<void()>& timed);
    // Test 1..8 of the contender in column 1..4 with kSizes[size] items; empty before it is timed.
    [[nodiscard]] std::optional<FineTime> At(int test, int column, std::size_t size) const;
    [[nodiscard]] bool Measured() const noexcept { return sizes_ != 0; }

  private:
    void MeasureSize(TimingRun& run, std::size_t size);

    using Results = std::array<TimingResult, kContenders.size()>;  // by column
    std::array<Results, kSizes.size()> results_{};
    std::size_t sizes_ = 0;  // timed so far
};

}  // namespace zorvane
