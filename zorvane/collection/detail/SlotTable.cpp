#include "zorvane/collection/detail/SlotTable.h"

#include <numeric>

namespace zorvane {

SlotTable::SlotTable(std::uint32_t slots) : free_(slots) {
    std::iota(free_.begin(), free_.end(), 0u);
}

std::uint32_t SlotTable::Seat(std::int32_t hash) {
    const auto slots = static_cast<std::uint32_t>(free_.size());
    std::uint32_t slot = HomeOf(hash, slots) - 1;
    while (free_[slot] != slot) {
        free_[slot] = free_[free_[slot]];  // shortens the way for whoever comes next
        slot = free_[slot];
    }
    free_[slot] = slot + 1 == slots ? 0 : slot + 1;
    return slot + 1;
}

std::uint32_t SlotTable::HomeOf(std::int32_t hash, std::uint32_t slots) noexcept {
    const std::int64_t size = slots;
    return static_cast<std::uint32_t>((hash % size + size) % size + 1);
}

}  // namespace zorvane
