#pragma once
// KeyedStore: records that have a Key, what is known of the order of their keys, and the search for
// one. Positions count from 1.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Units.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

// The order in which a search takes keys to stand.
struct KeyRule {
    CompareMode Mode = CompareMode::Binary;
    bool Descending = false;

    friend bool operator==(const KeyRule&, const KeyRule&) = default;
};

// The halves of a sum of two positions, halves to even: 1.5 gives 2 and so does 2.5.
[[nodiscard]] constexpr std::int32_t MiddleHalfEven(std::int32_t low, std::int32_t high) noexcept {
    const std::int64_t sum = std::int64_t{low} + high;
    return static_cast<std::int32_t>((sum >> 1) + ((sum & 3) == 3 ? 1 : 0));
}

template <class Record>
class KeyedStore : public RecordStore<Record> {
  public:
    using Store = RecordStore<Record>;
    using Store::All;
    using Store::At;
    using Store::Count;
    using typename Store::Stretch;

    struct Search {
        bool Found;
        std::int32_t Position;  // of the key, or where it belongs
    };

    // Whether the keys stand in the order of the rule.
    [[nodiscard]] bool InOrder(KeyRule rule) const noexcept {
        if (ordered_ && rule_ == rule) [[likely]]
            return true;
        return Count() < 2;
    }
    // Notes that they do, or that nothing is known of their order.
    void NoteOrder(bool ordered, KeyRule rule) noexcept {
        if (!ordered && !ordered_) return;
        ordered_ = ordered;
        rule_ = rule;
        if (!ordered || !PrefixesFollow(rule)) Store::DropPrefixes();
    }
    // Opens a record for a key at a position; `inOrder` tells that the key belongs there. May
    // throw, then no record changed.
    RecordNumber InsertKey(std::int32_t position, const Text& key, bool inOrder, KeyRule rule) {
        if (!inOrder || !PrefixesFollow(rule)) {
            Store::DropPrefixes();
            return Store::Insert(position);
        }
        PreparePrefixes(key);
        return Store::Insert(position, PrefixOf(key));
    }
    // Among keys in order: where a key can stand, or when it has to be absent, belongs.
    [[nodiscard]] Stretch PlacesFor(const Text& key) const {
        const bool byPrefix = Store::HasPrefixes() && (lead_ == 0 || SharedLead(key) >= lead_);
        return byPrefix ? Store::WithPrefix(PrefixOf(key)) : All();
    }
    // Among keys in order: the first place whose key does not come before this one.
    [[nodiscard]] std::int32_t FirstNotBefore(const Text& key, Stretch places, KeyRule rule) const {
        const int ahead = Ahead(rule);
        return Store::PartitionPoint(places, [&](const Record& record) {
            return CompareTexts(record.Key, key, rule.Mode) == ahead;
        });
    }
    // Where a key stands or belongs, as a search by halves tells: out of order it may miss keys,
    // and of several equal ones it hits any unless the first is asked for.
    [[nodiscard]] Search FindKey(const Text& key, bool firstOfEquals, KeyRule rule) const;

    friend void swap(KeyedStore& left, KeyedStore& right) noexcept {
        swap(static_cast<Store&>(left), static_cast<Store&>(right));
        std::swap(left.lead_, right.lead_);
        std::swap(left.inBytes_, right.inBytes_);
        std::swap(left.leadJudgedAt_, right.leadJudgedAt_);
        std::swap(left.ordered_, right.ordered_);
        std::swap(left.rule_, right.rule_);
    }

  private:
    // What a comparison gives for a key that stands in front of another.
    [[nodiscard]] static int Ahead(KeyRule rule) noexcept { return rule.Descending ? 1 : -1; }
    // Prefixes tell the binary order of keys, and no other.
    [[nodiscard]] static bool PrefixesFollow(KeyRule rule) noexcept { return rule == KeyRule(); }
    // The units behind the lead that all keys share, the first in the high bits: eight where those
    // of every key here fit a byte each (one that is only sought need not), else four.
    [[nodiscard]] std::uint64_t PrefixOf(const Text& key) const noexcept {
        return inBytes_ ? EightUnitsInBytes(key.Units(), lead_).Saturated()
                        : FourUnits(key.Units(), lead_);
    }
    [[nodiscard]] static bool FitsBytes(const Text& key, std::size_t lead) noexcept {
        return EightUnitsInBytes(key.Units(), lead).High == 0;
    }
    void PreparePrefixes(const Text& key);
    // How many units a key has in common with the first record's.
    [[nodiscard]] std::size_t SharedLead(const Text& key) const noexcept {
        const std::u16string_view first = At(1).Key.Units();
        const std::u16string_view units = key.Units();
        const auto differ = std::mismatch(first.begin(), first.end(), units.begin(), units.end());
        return static_cast<std::size_t>(differ.first - first.begin());
    }
    [[nodiscard]] Search FindByHalves(const Text& key, bool firstOfEquals, KeyRule rule) const;

    std::size_t lead_ = 0;           // units that all keys share, while there are prefixes
    bool inBytes_ = false;           // which have eight units, a byte each
    std::int32_t leadJudgedAt_ = 0;  // the count at which the lead was last looked for
    bool ordered_ = false;
    KeyRule rule_;  // in whose order the keys stand, if in any
};

// Sees to it that the records carry prefixes that the key to be added fits. The keys are in binary
// order, so what the first and the last share all share.
template <class Record>
void KeyedStore<Record>::PreparePrefixes(const Text& key) {
    constexpr std::int32_t kWorthwhile = 128;
    if (Count() < kWorthwhile) return;
    const bool fits = Store::HasPrefixes() && (lead_ == 0 || SharedLead(key) >= lead_) &&
                      (!inBytes_ || FitsBytes(key, lead_));
    if (fits && Count() < leadJudgedAt_ * 2) return;
    const std::size_t lead = std::min(SharedLead(key), SharedLead(At(Count()).Key));
    leadJudgedAt_ = Count();
    if (fits && lead <= lead_) return;
    lead_ = lead;
    inBytes_ = FitsBytes(key, lead);
    const auto attach = [&] {
        bool fitBytes = true;
        Store::AttachPrefixes([&](const Record& record) {
            fitBytes = fitBytes && FitsBytes(record.Key, lead);
            return PrefixOf(record.Key);
        });
        return fitBytes;
    };
    try {
        if (!attach() && inBytes_) {
            inBytes_ = false;
            attach();
        }
    } catch (...) {
        Store::DropPrefixes();  // those that it has may follow another rule
        throw;
    }
}

// In order, the answer is the first equal key or the one place between; only which of several equal
// keys is hit, and anything in another order, takes the search by halves to tell.
template <class Record>
auto KeyedStore<Record>::FindKey(const Text& key, bool firstOfEquals, KeyRule rule) const
    -> Search {
    if (!InOrder(rule)) return FindByHalves(key, firstOfEquals, rule);
    const Stretch places = PlacesFor(key);
    const std::int32_t position = FirstNotBefore(key, places, rule);
    const auto equals = [&](std::int32_t at) {
        return at <= Count() && EqualTexts(At(at).Key, key, rule.Mode);
    };
    if (places.Empty() || !equals(position)) return {false, position};
    if (!firstOfEquals && equals(position + 1)) return FindByHalves(key, firstOfEquals, rule);
    return {true, position};
}

template <class Record>
auto KeyedStore<Record>::FindByHalves(const Text& key, bool firstOfEquals, KeyRule rule) const
    -> Search {
    std::int32_t low = 1;
    std::int32_t high = Count();
    const auto orderAt = [&](std::int32_t at) { return CompareTexts(At(at).Key, key, rule.Mode); };
    while (low <= high) {
        std::int32_t middle = MiddleHalfEven(low, high);
        const int order = orderAt(middle);
        if (order == 0) {
            while (firstOfEquals && middle > 1 && orderAt(middle - 1) == 0) --middle;
            return {true, middle};
        }
        if (order == Ahead(rule)) {
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return {false, low};
}

}  // namespace zorvane
