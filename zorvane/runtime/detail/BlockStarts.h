#pragma once
// BlockStarts: at which position each of many blocks in a row begins.
//
// Every insertion into a block moves all behind it by one, so blocks stand in groups, and what a
// whole group has moved is noted once. Positions and blocks count from 0.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zorvane {

class BlockStarts {
  public:
    // `count` blocks of `step` positions each. May throw.
    void Assign(std::uint32_t count, std::uint32_t step);
    // Right behind Assign: where one of them begins.
    void Set(std::uint32_t block, std::uint32_t start) noexcept { starts_[block] = start; }
    // Room for `count` blocks in all. May throw, then nothing changed.
    void Reserve(std::uint32_t count);

    [[nodiscard]] std::uint32_t At(std::uint32_t block) const noexcept {
        return starts_[block] + ahead_[block / kGroup];
    }
    // The last block that begins at or in front of a position. O(log n).
    [[nodiscard]] std::uint32_t BlockOf(std::uint32_t position) const noexcept;

    // All behind `block` begin so much later (or, wrapping, earlier). O(kGroup + n / kGroup) sums,
    // side by side.
    void MoveBehind(std::uint32_t block, std::uint32_t difference) noexcept;
    // A new block, which begins at `start`; needs room that Reserve has made. O(n).
    void Insert(std::uint32_t block, std::uint32_t start) noexcept;
    void Erase(std::uint32_t block) noexcept;

  private:
    static constexpr std::uint32_t kGroup = 32;

    [[nodiscard]] static std::size_t GroupsOf(std::size_t blocks) noexcept {
        return (blocks + kGroup - 1) / kGroup;
    }
    void Resize(std::uint32_t count) noexcept;  // to no more than Reserve has made room for
    void Settle(std::uint32_t from) noexcept;
    [[nodiscard]] std::uint32_t* StartsOf(std::uint32_t group) noexcept {
        return starts_.data() + std::size_t{group} * kGroup;
    }

    std::uint32_t count_ = 0;
    // Of each block, less what its group has moved; whole groups, the last with what nobody reads.
    std::vector<std::uint32_t> starts_;
    std::vector<std::uint32_t> ahead_;  // for each group, how far it has moved
};

}  // namespace zorvane
