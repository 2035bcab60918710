#pragma once
// KeyIndex: from the hash of a key to record numbers, by open addressing.
//
// Slots hold {hash, number} side by side, so a probe touches no record before the hashes agree, and
// growth needs no record at all. Equal hashes may stand here any number of times. At most half
// full.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "zorvane/platform/LargeArray.h"
#include "zorvane/runtime/RecordOrder.h"

namespace zorvane {

class KeyIndex {
  public:
    // The first number under `hash` (never 0) for which matches(number) holds, where it stands
    // until the index changes, or null. O(1) on average.
    template <class Matches>
    [[nodiscard]] const RecordNumber* Find(std::uint32_t hash, Matches&& matches) const {
        if (count_ == 0) [[unlikely]]
            return nullptr;
        const Slot* slot = &slots_[Home(hash)];
        while (slot->hash != 0) {
            if (slot->hash == hash && matches(slot->number)) [[likely]]
                return &slot->number;
            slot = slot == &slots_[mask_] ? &slots_[0] : slot + 1;
        }
        return nullptr;
    }
    // Calls visit(number) for every number under `hash`.
    template <class Visit>
    void ForEach(std::uint32_t hash, Visit&& visit) const {
        static_cast<void>(Find(hash, [&](RecordNumber number) {
            visit(number);
            return false;
        }));
    }
    // Brings near what is to be touched under a hash.
    void Fetch(std::uint32_t hash) const noexcept {
        if (count_ != 0) __builtin_prefetch(&slots_[Home(hash)], 1);
    }
    // Room for `count` entries in all; may throw, then nothing changed.
    void Reserve(std::uint32_t count) {
        if (count * 2 > slots_.Size()) Resize(std::bit_ceil(std::max(kLeast, count * 2)));
    }
    // Needs room that Reserve has made.
    void Insert(std::uint32_t hash, RecordNumber number) noexcept {
        std::uint32_t at = Home(hash);
        while (slots_[at].hash != 0) at = Next(at);
        slots_[at] = {hash, number};
        ++count_;
    }
    // Takes one entry away that is there.
    void Erase(std::uint32_t hash, RecordNumber number) noexcept {
        std::uint32_t hole = Home(hash);
        while (slots_[hole].number != number || slots_[hole].hash != hash) hole = Next(hole);
        --count_;
        // Close the gap: whoever probed past the hole moves into it.
        for (std::uint32_t at = Next(hole); slots_[at].hash != 0; at = Next(at)) {
            const std::uint32_t home = Home(slots_[at].hash);
            if (((at - home) & mask_) >= ((at - hole) & mask_)) {
                slots_[hole] = slots_[at];
                hole = at;
            }
        }
        slots_[hole] = {};
    }
    // Puts newNumber(number) in the place of every number; the hashes stay. Asks for 0 as well,
    // which free slots hold, as a branch on what is free would mostly be guessed wrong.
    template <class NewNumber>
    void Renumber(NewNumber&& newNumber) noexcept {
        for (std::uint32_t at = 0; at < slots_.Size(); ++at) {
            const std::uint32_t used = slots_[at].hash != 0 ? ~0u : 0u;
            slots_[at].number = newNumber(slots_[at].number) & used;
        }
    }

    friend void swap(KeyIndex& left, KeyIndex& right) noexcept {
        swap(left.slots_, right.slots_);
        std::swap(left.mask_, right.mask_);
        std::swap(left.shift_, right.shift_);
        std::swap(left.count_, right.count_);
    }

  private:
    struct Slot {
        std::uint32_t hash = 0;  // 0 = free
        RecordNumber number = 0;
    };
    static constexpr std::uint32_t kLeast = 16;

    // The hash is well mixed in its high bits.
    [[nodiscard]] std::uint32_t Home(std::uint32_t hash) const noexcept { return hash >> shift_; }
    [[nodiscard]] std::uint32_t Next(std::uint32_t at) const noexcept { return (at + 1) & mask_; }
    void Resize(std::uint32_t size) {
        LargeArray<Slot> slots(size);
        swap(slots_, slots);
        mask_ = size - 1;
        shift_ = static_cast<std::uint32_t>(32 - std::countr_zero(size));
        count_ = 0;
        for (std::uint32_t at = 0; at < slots.Size(); ++at) {
            if (slots[at].hash != 0) Insert(slots[at].hash, slots[at].number);
        }
    }

    LargeArray<Slot> slots_;
    std::uint32_t mask_ = 0;
    std::uint32_t shift_ = 0;
    std::uint32_t count_ = 0;
};

}  // namespace zorvane
