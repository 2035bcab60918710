#pragma once
// KeyIndex: from the hash of a key to record numbers, by open addressing.
//
// Slots hold {hash, number} side by side, so a probe touches no record before the hashes agree, and
// growth needs no record at all. Equal hashes may stand here any number of times. At most half
// full. An index that finds itself crowded, as chance alone never makes it, asks to be tightened:
// its owner then gives every key a hash that tells all keys apart which the owner tells apart.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "zorvane/platform/LargeArray.h"
#include "zorvane/runtime/RecordOrder.h"

namespace zorvane {

class KeyIndex {
  public:
    // The most entries that an index takes: there are no more slots of 32 bits than twice as many.
    static constexpr std::uint32_t kMost = std::uint32_t{1} << 30;

    // The first number under `hash` (never 0) for which matches(number) holds, where it stands
    // until the index changes, or null. O(1) on average.
    template <class Matches>
    [[nodiscard]] const RecordNumber* Find(std::uint32_t hash, Matches&& matches) const {
        if (count_ == 0) [[unlikely]]
            return nullptr;
        return FindAmongSlots(hash, matches);
    }
    // The same in an index that IsPlain().
    template <class Matches>
    [[nodiscard]] const RecordNumber* FindAmongSlots(std::uint32_t hash, Matches&& matches) const {
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
    // Room for `count` entries in all; may throw, std::length_error beyond kMost, then nothing
    // changed.
    void Reserve(std::uint32_t count) {
        if (count > slots_.Size() / 2) Grow(count);
    }
    // Whether one entry more may come as it is: no Reserve and no Tighten is due.
    [[nodiscard]] bool TakesOne() const noexcept { return count_ < room_; }
    // Whether Tighten is due before the next entry comes.
    [[nodiscard]] bool IsCrowded() const noexcept { return state_ == State::Crowded; }
    // Whether there are slots, and what stands in them stands under ordinary hashes. So it mostly
    // is: a look-up needs no other question.
    [[nodiscard]] bool IsPlain() const noexcept { return plain_; }
    // Whether the owner's strict hashes stand here instead of its ordinary ones.
    [[nodiscard]] bool IsStrict() const noexcept { return state_ == State::Strict; }
    // Puts every entry under strictHash(number), which must not fail. O(n). May throw, then nothing
    // changed.
    template <class StrictHash>
    void Tighten(StrictHash&& strictHash) {
        LargeArray<Slot> slots(slots_.Size());
        state_ = State::Strict;
        Refill(std::move(slots), [&](Slot slot) { return strictHash(slot.number); });
    }
    // Needs room that Reserve has made.
    void Insert(std::uint32_t hash, RecordNumber number) noexcept {
        const std::uint32_t home = Home(hash);
        std::uint32_t at = home;
        if (slots_[at].hash != 0) {
            do at = Next(at);
            while (slots_[at].hash != 0);
            if (((at - home) & mask_) >= kFar) [[unlikely]]
                LookForCrowd(hash);
        }
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
    // How many slots it takes to find every entry once: about 1.5 each where no key is like
    // another. O(n).
    [[nodiscard]] std::uint64_t Passed() const noexcept {
        std::uint64_t passed = 0;
        for (std::uint32_t at = 0; at < slots_.Size(); ++at) {
            if (slots_[at].hash != 0) passed += ((at - Home(slots_[at].hash)) & mask_) + 1;
        }
        return passed;
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
        std::swap(left.room_, right.room_);
        std::swap(left.state_, right.state_);
        std::swap(left.plain_, right.plain_);
    }

  private:
    struct Slot {
        std::uint32_t hash = 0;  // 0 = free
        RecordNumber number = 0;
    };
    enum class State : std::uint8_t { Open, Crowded, Strict };
    static constexpr std::uint32_t kLeast = 16;
    // Behind a home so many slots away another look is worth it. Half full, one in a hundred is.
    static constexpr std::uint32_t kFar = 12;
    // Three of a million keys may share a hash by chance, and an entry stand 80 slots away.
    static constexpr std::uint32_t kMostAlike = 4;
    static constexpr std::uint32_t kFarthest = 192;

    // The hash is well mixed in its high bits.
    [[nodiscard]] std::uint32_t Home(std::uint32_t hash) const noexcept { return hash >> shift_; }
    [[nodiscard]] std::uint32_t Next(std::uint32_t at) const noexcept { return (at + 1) & mask_; }
    void Grow(std::uint32_t count) {
        if (count > kMost) throw std::length_error("KeyIndex: too many entries");
        Refill(LargeArray<Slot>(std::bit_ceil(std::max(kLeast, count * 2))),
               [](Slot slot) { return slot.hash; });
    }
    // Moves every entry into other slots. Those of one hash keep their order: it begins behind a
    // free slot, so that no row of them is cut.
    template <class HashOf>
    void Refill(LargeArray<Slot> slots, HashOf&& hashOf) noexcept {
        swap(slots_, slots);
        mask_ = static_cast<std::uint32_t>(slots_.Size()) - 1;
        shift_ = static_cast<std::uint32_t>(32 - std::countr_zero(slots_.Size()));
        room_ = IsCrowded() ? 0 : (mask_ + 1) / 2;
        plain_ = !IsStrict();
        const auto size = static_cast<std::uint32_t>(slots.Size());
        std::uint32_t begin = 0;
        while (begin < size && slots[begin].hash != 0) ++begin;
        const auto move = [&](std::uint32_t from, std::uint32_t to) {
            for (std::uint32_t at = from; at < to; ++at) {
                if (slots[at].hash == 0) continue;
                const std::uint32_t hash = hashOf(slots[at]);
                std::uint32_t place = Home(hash);
                while (slots_[place].hash != 0) place = Next(place);
                slots_[place] = {hash, slots[at].number};
            }
        };
        move(begin, size);
        move(0, begin);
    }
    [[gnu::noinline]] void LookForCrowd(std::uint32_t hash) noexcept {
        if (state_ != State::Open) return;
        std::uint32_t passed = 0;
        std::uint32_t alike = 0;
        for (std::uint32_t at = Home(hash); slots_[at].hash != 0; at = Next(at)) {
            alike += slots_[at].hash == hash ? 1u : 0u;
            if (alike < kMostAlike && ++passed < kFarthest) continue;
            state_ = State::Crowded;
            room_ = 0;
            return;
        }
    }

    LargeArray<Slot> slots_;
    std::uint32_t mask_ = 0;
    std::uint32_t shift_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t room_ = 0;  // entries that may come as they are; crowded: none
    State state_ = State::Open;
    bool plain_ = false;
};

}  // namespace zorvane
