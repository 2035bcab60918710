#include "zorvane/runtime/detail/BlockStarts.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace zorvane {
namespace {

// The last of `count` places, in order, whose start is not behind a position; the first, if all
// are. No branch depends on what is found.
template <class StartOf>
std::uint32_t LastNotBehind(std::uint32_t position, std::uint32_t count, StartOf&& startOf) {
    std::uint32_t low = 0;
    while (count > 1) {
        const std::uint32_t half = count / 2;
        low += startOf(low + half) <= position ? half : 0;
        count -= half;
    }
    return low;
}

}  // namespace

void BlockStarts::Assign(std::uint32_t count, std::uint32_t step) {
    Reserve(count);
    Resize(count);
    std::fill(ahead_.begin(), ahead_.end(), 0u);
    for (std::uint32_t i = 0; i < count; ++i) starts_[i] = i * step;
}

void BlockStarts::Reserve(std::uint32_t count) {
    const auto makeRoom = [](std::vector<std::uint32_t>& values, std::size_t wanted) {
        if (wanted > values.capacity()) values.reserve(std::max(wanted, 2 * values.size()));
    };
    makeRoom(starts_, GroupsOf(count) * kGroup);
    makeRoom(ahead_, GroupsOf(count));
}

std::uint32_t BlockStarts::BlockOf(std::uint32_t position) const noexcept {
    const auto groups = static_cast<std::uint32_t>(ahead_.size());
    const std::uint32_t group =
        LastNotBehind(position, groups, [&](std::uint32_t i) { return At(i * kGroup); });
    const std::uint32_t first = group * kGroup;
    const std::uint32_t within = position - ahead_[group];
    // Compared as differences from the group's first: a group may have moved below 0 meanwhile.
    const std::uint32_t base = starts_[first];
    return first + LastNotBehind(within - base, std::min(kGroup, count_ - first),
                                 [&](std::uint32_t i) { return starts_[first + i] - base; });
}

void BlockStarts::MoveBehind(std::uint32_t block, std::uint32_t difference) noexcept {
    // All of its group, if only by 0: how many blocks follow in it would be a branch guessed wrong.
    using Four [[gnu::vector_size(16)]] = std::uint32_t;
    using Indexes [[gnu::vector_size(16)]] = std::int32_t;
    const std::uint32_t group = block / kGroup;
    std::uint32_t* const starts = StartsOf(group);
    const auto last = static_cast<std::int32_t>(block % kGroup);
    Indexes index{0, 1, 2, 3};
    for (std::uint32_t i = 0; i < kGroup; i += 4) {
        Four four;
        std::memcpy(&four, starts + i, sizeof four);
        four += std::bit_cast<Four>(index > last) & difference;
        std::memcpy(starts + i, &four, sizeof four);
        index += 4;
    }
    for (std::uint32_t i = group + 1; i < ahead_.size(); ++i) ahead_[i] += difference;
}

// Tells every block from a group on by itself what its group has moved.
void BlockStarts::Settle(std::uint32_t from) noexcept {
    for (std::uint32_t group = from; group < ahead_.size(); ++group) {
        const std::uint32_t moved = std::exchange(ahead_[group], 0u);
        std::uint32_t* const starts = StartsOf(group);
        for (std::uint32_t i = 0; i < kGroup; ++i) starts[i] += moved;
    }
}

void BlockStarts::Resize(std::uint32_t count) noexcept {
    count_ = count;
    starts_.resize(GroupsOf(count) * kGroup);
    ahead_.resize(GroupsOf(count));
}

void BlockStarts::Insert(std::uint32_t block, std::uint32_t start) noexcept {
    const std::uint32_t behind = count_ - block;
    Settle(block / kGroup);
    Resize(count_ + 1);
    std::copy_backward(&starts_[block], &starts_[block] + behind, &starts_[block] + behind + 1);
    starts_[block] = start;
}

void BlockStarts::Erase(std::uint32_t block) noexcept {
    Settle(block / kGroup);
    std::copy(&starts_[block] + 1, starts_.data() + count_, &starts_[block]);
    Resize(count_ - 1);
}

}  // namespace zorvane
