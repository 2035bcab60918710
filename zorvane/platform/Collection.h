#pragma once
/// \class zorvane::Collection
/// The platform's keyed collection: items in order, some of them under a text key.
///
/// Keys are unique without regard to case. Every entry knows its place: places count up along the
/// order, so a position is a subtraction. Removing and inserting renumber the shorter side only.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/EntryName.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

/// What Add takes beyond the item. Before and After name an entry as vKeyIndex does; not both.
struct CollectionAdd {
    std::optional<Text> Key = {};
    std::optional<Variant> Before = {};
    std::optional<Variant> After = {};
};

/// A vKeyIndex that is or holds a text is a key, in any form (raises 5 when absent); any other
/// converts to a 32-bit position 1..Count() (raises 9 outside; of a tagged value, 6 or 13 when it
/// has no such form).
class ZORVANE_EXPORT Collection : public Object {
  public:
    class Iterator;

    Collection() = default;
    Collection(const Collection&) = delete;  ///< nor can it be moved
    Collection& operator=(const Collection&) = delete;
    ~Collection() override;

    /// Raises 457 for a key in use and 5 for both Before and After; a failed Add changes nothing.
    /// O(1) at either end, else O(distance to the nearer end).
    void Add(Variant item, CollectionAdd options = {});
    /// @{
    /// How many entries there are.
    [[nodiscard]] std::int32_t Count() const noexcept {
        return static_cast<std::int32_t>(order_.size());
    }
    [[nodiscard]] std::size_t size() const noexcept { return order_.size(); }
    [[nodiscard]] bool empty() const noexcept { return order_.empty(); }
    /// @}
    /// O(1).
    template <NamesEntry T>
    [[nodiscard]] Variant Item(const T& vKeyIndex) const {
        return Find(ConvertibleNameOf(vKeyIndex)).Item;
    }
    /// O(1) at either end, else O(distance to the nearer end).
    template <NamesEntry T>
    void Remove(const T& vKeyIndex) {
        RemoveNamed(ConvertibleNameOf(vKeyIndex));
    }

    /// The items in order. An iterator survives additions and removals: it counts positions.
    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] Iterator end() const noexcept;

    [[nodiscard]] Text TypeName() const override { return u"Collection"; }
    Variant Call(std::u16string_view member, Arguments arguments = {}) override;
    Variant Get(std::u16string_view member, Arguments arguments = {}) override;

  private:
    struct Entry {
        Variant Item;
        Text Key;
        bool Keyed = false;
        std::int64_t Place = 0;
        Entry* Next = nullptr;  // the next of the same bucket
    };

    [[nodiscard]] Entry& Find(const Variant& vKeyIndex) const;
    [[nodiscard]] Entry* FindKey(const Text& key) const noexcept;
    [[nodiscard]] std::size_t BucketOf(const Text& key) const noexcept;
    void GrowBuckets();
    [[nodiscard]] bool IsCrowded(const Entry& entry) const noexcept;
    [[nodiscard]] std::size_t IndexOf(const Entry& entry) const noexcept {
        return static_cast<std::size_t>(entry.Place - order_.front()->Place);
    }
    void Link(Entry& entry) noexcept;
    void LinkAll() noexcept;
    void RemoveNamed(const Variant& vKeyIndex);
    void Renumber(std::size_t from, std::size_t to, std::int64_t distance) noexcept;
    void Unlink(const Entry& entry) noexcept;

    std::deque<std::unique_ptr<Entry>> order_;
    // Chains of entries by the hash of their keys; a power of two and never fewer than the entries.
    std::vector<Entry*> buckets_;
    // A bucket was crowded once: from then on a hash that tells all keys apart says where they are.
    bool strict_ = false;
};

class Collection::Iterator {
  public:
    using difference_type = std::ptrdiff_t;
    using value_type = Variant;

    Iterator() = default;
    Iterator(const Collection& collection, std::size_t at) noexcept
        : collection_(&collection), at_(at) {}
    const Variant& operator*() const noexcept { return collection_->order_[at_]->Item; }
    Iterator& operator++() noexcept {
        ++at_;
        return *this;
    }
    Iterator operator++(int) noexcept {
        Iterator before = *this;
        ++at_;
        return before;
    }
    /// Past the end is one place, wherever the end is by now.
    friend bool operator==(const Iterator& left, const Iterator& right) noexcept {
        return left.At() == right.At();
    }

  private:
    [[nodiscard]] std::size_t At() const noexcept {
        return collection_ && at_ < collection_->order_.size() ? at_ : SIZE_MAX;
    }

    const Collection* collection_ = nullptr;
    std::size_t at_ = 0;
};

inline Collection::Iterator Collection::begin() const noexcept {
    return {*this, 0};
}
inline Collection::Iterator Collection::end() const noexcept {
    return {*this, SIZE_MAX};
}

}  // namespace zorvane
