#pragma once
// RecordOrder: which record number stands at which position, and back.
//
// Two forms, chosen by itself. A run: the numbers are consecutive, so a position is a subtraction;
// adding and removing at the ends keeps it. Blocks: numbers in blocks of at most kBlock, found by
// where these begin (BlockStarts); any insertion or removal moves at most one block's numbers.
// Blocks may carry a 64-bit sort prefix beside each number, so that a search in a sorted order
// compares integers that lie side by side. Positions here count from 0.

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/LargeArray.h"
#include "zorvane/platform/SharedCount.h"
#include "zorvane/runtime/detail/BlockStarts.h"
#include "zorvane/runtime/detail/Slabs.h"

namespace zorvane {

// Names a record for as long as it lives, wherever it stands.
using RecordNumber = std::uint32_t;

// Numbers with room at both ends, so that the shorter side moves.
struct RecordOrderBlock {
    static constexpr std::uint32_t kRoom = 256;
    struct PrefixArray {
        std::uint64_t values[kRoom];
    };

    std::uint32_t begin = 0;  // numbers begin..begin+count-1 are in use
    std::uint32_t count = 0;
    // Its index and the position of its first number, when it was last looked at or changed.
    Remembered<std::uint32_t> ordinal = 0;
    Remembered<std::uint32_t> from = 0;
    PrefixArray* prefixes = nullptr;  // while the order has prefixes, and maybe later
    RecordNumber numbers[kRoom];

    [[nodiscard]] RecordNumber* Numbers() noexcept { return numbers + begin; }
    [[nodiscard]] const RecordNumber* Numbers() const noexcept { return numbers + begin; }
    [[nodiscard]] std::uint64_t* Prefixes() noexcept { return prefixes->values + begin; }
    [[nodiscard]] const std::uint64_t* Prefixes() const noexcept {
        return prefixes->values + begin;
    }
};
// Holds no position.
inline constinit RecordOrderBlock kNoBlock{};

class ZORVANE_EXPORT RecordOrder {
  public:
    RecordOrder() = default;
    RecordOrder(RecordOrder&&) noexcept = default;
    RecordOrder& operator=(RecordOrder&&) noexcept = default;

    // The number at a position below Count(). Run O(1); blocks O(log n), O(1) near the last one
    // asked.
    [[nodiscard]] RecordNumber At(std::uint32_t position) const noexcept {
        const RecordNumber* const near = Near(position);
        return near ? *near : Seek(position);
    }
    // Where the number at a position, any, stands, if in the block that was asked or changed last;
    // null in a run.
    [[nodiscard]] const RecordNumber* Near(std::uint32_t position) const noexcept {
        const Block& block = *near_.Get();
        const std::uint32_t within = position - block.from.Get();
        return within < block.count ? block.Numbers() + within : nullptr;
    }
    [[nodiscard]] std::uint32_t Count() const noexcept { return count_; }
    // Blocks only: the numbers from a position below Count() on that lie side by side.
    [[nodiscard]] std::span<const RecordNumber> From(std::uint32_t position) const noexcept {
        const Block& block = FindBlock(position);
        const std::uint32_t within = position - block.from.Get();
        return {block.Numbers() + within, block.count - within};
    }
    // The position of a number that stands here. Run O(1); blocks O(kBlock) on 4-byte numbers, and
    // O(n / kBlock) more for the first after a block came or went.
    [[nodiscard]] std::uint32_t PositionOf(RecordNumber number) const noexcept;
    [[nodiscard]] bool IsRun() const noexcept { return isRun_; }
    // The first number of a run; of blocks: the first that the run had.
    [[nodiscard]] RecordNumber First() const noexcept { return first_; }

    // Runs only: moves the ends.
    void ResizeRun(RecordNumber first, std::uint32_t count) noexcept {
        first_ = first;
        count_ = count;
    }
    // Makes it a run of `count` numbers from `first`, whatever it was.
    void SetRun(RecordNumber first, std::uint32_t count) noexcept;
    // Turns a run into blocks (the numbers stay as they are). O(n). May throw, then nothing
    // changed.
    void ToBlocks();
    // Makes it blocks of these numbers, which are not below `least` and differ modulo `places`, a
    // power of two. O(n). May throw, then nothing changed.
    void SetBlocks(std::span<const RecordNumber> numbers, RecordNumber least, std::uint32_t places);
    // Blocks only: makes it possible to insert one number without a failure, of which the same
    // holds as of those that stand here then. May throw, then nothing changed.
    void PrepareInsert(RecordNumber least, std::uint32_t places);
    // Blocks only: puts a number, and its prefix where the order carries prefixes, at a position.
    // Numbers count up, wrapping, from the first that the run had. May throw, then nothing changed.
    void Insert(std::uint32_t position, RecordNumber number, std::uint64_t prefix = 0);
    // Blocks only: takes the number at a position away.
    void Erase(std::uint32_t position) noexcept;
    // Blocks only: takes every number away for which doomed(number) holds; it is asked once for
    // each, in order. O(n).
    template <class Doomed>
    void EraseIf(Doomed&& doomed) noexcept {
        std::uint32_t to = 0;  // the block that takes what stays; never ahead of the one read
        for (std::uint32_t from = 0; from < blocks_.size(); ++from) {
            const Block& block = *blocks_[from];
            const std::uint32_t end = block.begin + block.count;
            blocks_[from]->count = 0;
            for (std::uint32_t at = block.begin; at < end; ++at) {
                if (!doomed(block.numbers[at])) to = Keep(from, at, to);
            }
        }
        KeepBlocks(to + 1);
    }

    // Blocks only: gives every number the prefix prefixOf(number); prefixes never decrease along
    // the order. O(n). May throw, then nothing changed.
    template <class PrefixOf>
    void AttachPrefixes(PrefixOf&& prefixOf) {
        const auto without = [](const Block* block) { return !block->prefixes; };
        prefixRoom_.Prepare(static_cast<std::size_t>(std::ranges::count_if(blocks_, without)));
        std::vector<std::uint64_t> firstPrefixes(blocks_.size());
        firstPrefixes_.swap(firstPrefixes);
        for (std::size_t i = 0; i < blocks_.size(); ++i) {
            Block& block = *blocks_[i];
            if (!block.prefixes) block.prefixes = prefixRoom_.Take();
            for (std::uint32_t k = 0; k < block.count; ++k) {
                block.Prefixes()[k] = prefixOf(block.Numbers()[k]);
            }
            firstPrefixes_[i] = block.count != 0 ? block.Prefixes()[0] : 0;
        }
    }
    void DropPrefixes() noexcept { firstPrefixes_.clear(); }
    [[nodiscard]] bool HasPrefixes() const noexcept { return !firstPrefixes_.empty(); }

    // The first position of low..high whose number fails `before`, else high; numbers for which it
    // holds stand in front. O(log n) calls.
    template <class Before>
    [[nodiscard]] std::uint32_t PartitionPoint(std::uint32_t low, std::uint32_t high,
                                               Before&& before) const {
        while (low < high) {
            const std::uint32_t middle = low + (high - low) / 2;
            if (before(At(middle))) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low;
    }
    // In an order with prefixes: the first position with a prefix and the one behind the last; both
    // the place for it when there is none. O(log n).
    [[nodiscard]] std::pair<std::uint32_t, std::uint32_t> EqualPrefixes(
        std::uint64_t prefix) const noexcept;

    static constexpr std::uint32_t kBlock = RecordOrderBlock::kRoom;

  private:
    using Block = RecordOrderBlock;
    using PrefixArray = Block::PrefixArray;

    template <class NumberAt>
    void Fill(std::uint32_t count, std::size_t places, NumberAt&& numberAt);
    [[nodiscard]] std::uint32_t Keep(std::uint32_t from, std::uint32_t at,
                                     std::uint32_t to) noexcept;
    void KeepBlocks(std::uint32_t count) noexcept;
    void CloseGap(Block& block, std::uint32_t within) const noexcept;
    [[nodiscard]] Block& FindBlock(std::uint32_t position) const noexcept;
    void ForgetNear() noexcept { near_ = &kNoBlock; }
    [[nodiscard]] std::uint32_t Locate(const Block& block) const noexcept;
    Block& LookAt(std::uint32_t ordinal) const noexcept;
    void NoteOwner(Block& block) noexcept;
    void OpenGap(Block& block, std::uint32_t within) const noexcept;
    [[nodiscard]] RecordNumber Seek(std::uint32_t position) const noexcept;
    void Split(std::uint32_t block);

    std::uint32_t count_ = 0;
    bool isRun_ = true;
    RecordNumber first_ = 0;

    // Blocks in order, none empty unless it is the only one.
    std::vector<Block*> blocks_;
    Slabs<Block> room_;
    Slabs<PrefixArray> prefixRoom_;
    BlockStarts starts_;
    std::vector<std::uint64_t> firstPrefixes_;  // of each block; empty: no prefixes
    // The block of number n stands at n % size, a power of two no smaller than the numbers' span
    // (which begins at first_).
    LargeArray<Block*> owners_;

    // The block that was looked at or changed last: what is done next is mostly done there, and
    // costs no search. What it remembers of itself holds until the order changes, so whoever looks
    // for a block, in whatever thread, writes the same there.
    Remembered<Block*> near_ = &kNoBlock;
};

}  // namespace zorvane
