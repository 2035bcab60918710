#include "runtime/BlockStarts.h"

#include <algorithm>

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
    starts_.resize(count);
    ahead_.assign(GroupsOf(count), 0);
    for (std::uint32_t i = 0; i < count; ++i) starts_[i] = i * step;
}

void BlockStarts::Reserve(std::uint32_t count) {
    const auto makeRoom = [](std::vector<std::uint32_t>& values, std::size_t wanted) {
        if (wanted > values.capacity()) values.reserve(std::max(wanted, 2 * values.size()));
    };
    makeRoom(starts_, count);
    makeRoom(ahead_, GroupsOf(count));
}

std::uint32_t BlockStarts::BlockOf(std::uint32_t position) const noexcept {
    const auto count = static_cast<std::uint32_t>(starts_.size());
    const auto groups = static_cast<std::uint32_t>(ahead_.size());
    const std::uint32_t group =
        LastNotBehind(position, groups, [&](std::uint32_t i) { return At(i * kGroup); });
    const std::uint32_t first = group * kGroup;
    const std::uint32_t within = position - ahead_[group];
    // Compared as differences from the group's first: a group may have moved below 0 meanwhile.
    const std::uint32_t base = starts_[first];
    return first + LastNotBehind(within - base, std::min(kGroup, count - first),
                                 [&](std::uint32_t i) { return starts_[first + i] - base; });
}

void BlockStarts::MoveBehind(std::uint32_t block, std::uint32_t difference) noexcept {
    const auto count = static_cast<std::uint32_t>(starts_.size());
    const std::uint32_t group = block / kGroup;
    const std::uint32_t end = std::min((group + 1) * kGroup, count);
    for (std::uint32_t i = block + 1; i < end; ++i) starts_[i] += difference;
    for (std::uint32_t i = group + 1; i < ahead_.size(); ++i) ahead_[i] += difference;
}

// Tells every block by itself what its group has moved.
void BlockStarts::Settle() noexcept {
    for (std::uint32_t i = 0; i < starts_.size(); ++i) starts_[i] += ahead_[i / kGroup];
    std::fill(ahead_.begin(), ahead_.end(), 0u);
}

void BlockStarts::Insert(std::uint32_t block, std::uint32_t start) noexcept {
    Settle();
    starts_.insert(starts_.begin() + block, start);
    ahead_.resize(GroupsOf(starts_.size()));
}

void BlockStarts::Erase(std::uint32_t block) noexcept {
    Settle();
    starts_.erase(starts_.begin() + block);
    ahead_.resize(GroupsOf(starts_.size()));
}

}  // namespace zorvane
