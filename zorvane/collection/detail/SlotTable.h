#pragma once
// SlotTable: the slots that linear probing gives to hashes seated one after another.
//
// The slot that an entry of an open-addressing table with re-seating removal stands in depends on
// nothing but the number of slots, the live hashes and the order in which they were seated. So a
// table that nobody probes can be computed when somebody asks.

#include <cstdint>
#include <vector>

namespace zorvane {

class SlotTable {
  public:
    // `slots` free slots, numbered 1..slots.
    explicit SlotTable(std::uint32_t slots);

    // Seats a hash in the first free slot from its home on, wrapping behind the last, and gives the
    // slot's number. Nearly O(1) however the hashes cluster. At most `slots` calls.
    std::uint32_t Seat(std::int32_t hash);

    // The slot where the probe for a hash begins. A negative hash counts from the end.
    [[nodiscard]] static std::uint32_t HomeOf(std::int32_t hash, std::uint32_t slots) noexcept;

  private:
    std::vector<std::uint32_t>
        free_;  // for each slot from 0: a slot at or behind it, nearer to a free one
};

}  // namespace zorvane
