#pragma once
// RecordOrder: which record number stands at which position, and back.
//
// Two forms, chosen by itself. A run: the numbers are consecutive, so a position is a subtraction;
// adding and removing at the ends keeps it. Blocks: numbers in blocks of at most kBlock, found by
// running sums of the blocks' counts; any insertion or removal moves at most one block's numbers.
// Positions here count from 0.

#include <cstdint>
#include <memory>
#include <vector>

namespace zorvane {

// Names a record for as long as it lives, wherever it stands.
using RecordNumber = std::uint32_t;

class RecordOrder {
  public:
    RecordOrder() = default;
    RecordOrder(RecordOrder&&) noexcept = default;
    RecordOrder& operator=(RecordOrder&&) noexcept = default;

    // The number at a position below Count(). Run O(1); blocks O(log n), O(1) near the last one
    // asked.
    [[nodiscard]] RecordNumber At(std::uint32_t position) const noexcept {
        if (isRun_) return first_ + position;
        const std::uint32_t within = position - cursorFrom_;
        return within < cursorCount_ ? cursorNumbers_[within] : Seek(position);
    }
    [[nodiscard]] std::uint32_t Count() const noexcept { return count_; }
    // The position of a number that stands here. Run O(1); blocks O(kBlock) on 4-byte numbers.
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
    // Blocks only: puts a number at a position. Numbers count up, wrapping, from the first that the
    // run had. May throw, then nothing changed.
    void Insert(std::uint32_t position, RecordNumber number);
    // Blocks only: takes the number at a position away.
    void Erase(std::uint32_t position) noexcept;

    // The first position whose number fails `before`; numbers for which it holds stand in front.
    // O(log n) calls.
    template <class Before>
    [[nodiscard]] std::uint32_t PartitionPoint(Before&& before) const {
        std::uint32_t low = 0;
        std::uint32_t high = count_;
        if (!isRun_) {
            const std::uint32_t block = LastBlockWhoseFirst(before);
            low = StartOf(block);
            high = low + blocks_[block]->count;
        }
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

    static constexpr std::uint32_t kBlock = 512;

  private:
    struct Block {
        std::uint32_t count = 0;
        std::uint32_t ordinal = 0;  // index in blocks_
        RecordNumber numbers[kBlock];
    };

    void AddToSums(std::uint32_t block, std::uint32_t difference) noexcept;
    [[nodiscard]] std::uint32_t FindBlock(std::uint32_t& position) const noexcept;
    void ForgetCursor() const noexcept { cursorCount_ = 0; }
    template <class Before>
    [[nodiscard]] std::uint32_t LastBlockWhoseFirst(Before& before) const {
        std::uint32_t low = 0;
        auto high = static_cast<std::uint32_t>(blocks_.size());
        while (high - low > 1) {
            const std::uint32_t middle = low + (high - low) / 2;
            if (before(blocks_[middle]->numbers[0])) {
                low = middle;
            } else {
                high = middle;
            }
        }
        return low;
    }
    void NoteOwner(const Block& block) noexcept;
    void RebuildSums() noexcept;
    [[nodiscard]] RecordNumber Seek(std::uint32_t position) const noexcept;
    void Split(std::uint32_t block);
    [[nodiscard]] std::uint32_t StartOf(std::uint32_t block) const noexcept;

    std::uint32_t count_ = 0;
    bool isRun_ = true;
    RecordNumber first_ = 0;

    // Blocks in order, none empty unless it is the only one.
    std::vector<std::unique_ptr<Block>> blocks_;
    std::vector<std::uint32_t> sums_;  // a binary indexed tree over the blocks' counts, from 1
    // The block of number n stands at n % size, a power of two no smaller than the numbers' span
    // (which begins at first_).
    std::vector<Block*> owners_;

    // The block that answered last: runs of neighbouring positions cost O(1) each.
    mutable std::uint32_t cursorFrom_ = 0;
    mutable std::uint32_t cursorCount_ = 0;
    mutable const RecordNumber* cursorNumbers_ = nullptr;
};

}  // namespace zorvane
