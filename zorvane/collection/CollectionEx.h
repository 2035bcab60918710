#pragma once
/// \class zorvane::CollectionEx
/// The hand-written keyed collection: items in order, each under a key of its own.
///
/// Keys are the same when their lower-cased forms are; no two entries share one. Between public
/// calls: while Sorted(), keys stand in binary order of their lower-cased forms; Count() never
/// exceeds Capacity(). It raises the platform's numbers 5, 9 and 457 and, unlike the generated
/// classes, never answers with codes.
///
/// Cost: look-up by key and by position O(1) to O(log n); Add and Remove the same and the move of
/// at most a block of 4-byte numbers. When memory runs out, std::bad_alloc leaves the entries as
/// they were.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/EntryName.h"
#include "zorvane/platform/Enumerator.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/DoomedRecords.h"
#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/RecordIterator.h"
#include "zorvane/runtime/RecordStore.h"

namespace zorvane {

/// What Add takes beyond item and key. Before and After name an entry as vKeyIndex does.
struct CollectionExAdd {
    std::optional<Variant> Before = {};
    std::optional<Variant> After = {};
    bool Replace = false;  ///< a key that is present gets the new item instead of raising 457
};

/// One entry to be added.
struct NewCollectionExEntry {
    Text Key;
    Variant Item = {};
};

/// One entry: its key, lower-cased, and where its item lies until the collection changes.
struct CollectionExEntry {
    Text Key;
    const Variant& Item;
};

/// A vKeyIndex that is or holds a text is a key, in any form; anything else is converted to a
/// 32-bit position (a tagged value raises 6 or 13 where it has no such form; a whole number that 32
/// bits do not hold is out of range).
class ZORVANE_EXPORT CollectionEx : public Object {
    struct Record {
        using Relocatable = void;
        Variant Item;
        Text Key;  // as given, until an order by key asks for its lower-cased form
    };
    struct EntryOfRecord {
        static CollectionExEntry Of(const Record& record) {
            return {LowerCase(record.Key), record.Item};
        }
    };

  public:
    using Iterator = RecordIterator<Record, ItemOfRecord>;

    CollectionEx() noexcept = default;
    /// With these entries; raises what Add raises.
    CollectionEx(std::initializer_list<NewCollectionExEntry> entries) : CollectionEx() {
        Add(entries);
    }
    CollectionEx(CollectionEx&& other) noexcept { swap(*this, other); }
    CollectionEx& operator=(CollectionEx&& other) noexcept {
        CollectionEx taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    CollectionEx(const CollectionEx&) = delete;
    CollectionEx& operator=(const CollectionEx&) = delete;
    /// A release may run code that uses the collection, and even add to it.
    ~CollectionEx() override {
        while (Count() != 0 || snapshot_) ReleaseAll();
    }

    /// The capacity after Clear (at least 20), what is added when it is reached (below 20: the
    /// initial size) and hash slots per record (at least 1.5). An empty collection is cleared; one
    /// with entries takes the initial size as its capacity, but never less than Count().
    void SetMemory(std::int32_t InitialSize, std::int32_t GrowStep, float TableRatio);
    /// Removes every entry. Kept: Sorted stays as it is.
    void Clear() noexcept;
    /// @{
    /// How many entries there are.
    [[nodiscard]] std::int32_t Count() const noexcept { return records_.Count(); }
    [[nodiscard]] std::size_t size() const noexcept { return static_cast<std::size_t>(Count()); }
    [[nodiscard]] bool empty() const noexcept { return Count() == 0; }
    /// @}

    /// While Sorted() the place follows from the key, and Before and After are ignored, even both.
    /// Raises 457 for a key that is present (unless Replace), and for a new key on an unsorted
    /// collection 5 when both Before and After are given or their key is absent, 9 when their
    /// position is outside 1..Count(). Kept: a full collection grows before such an error.
    void Add(Variant Item, Text Key, const CollectionExAdd& Options = {});
    /// Adds several; those before one that fails stay.
    void Add(std::initializer_list<NewCollectionExEntry> entries) {
        for (const NewCollectionExEntry& entry : entries) Add(entry.Item, entry.Key);
    }

    /// Raises 5 for an absent key and 9 for a position outside 1..Count().
    template <NamesEntry T>
    [[nodiscard]] Variant Item(const T& vKeyIndex) const {
        if constexpr (WholePosition<T>) {  // what loops ask by, with no tagged value made of it
            const Record* const record = records_.Find(AsPosition(vKeyIndex));
            if (!record) RaisePlatform(PlatformError::OutOfRange);
            return record->Item;
        } else {
            return ItemNamed(NameOf(vKeyIndex));
        }
    }
    /// The same where it lies, or null where there is none: nothing is copied, and only what
    /// converts to no position raises. A position is converted as Item does it, unlike Exists. The
    /// pointer ends with the next change of the collection.
    template <NamesEntry T>
    [[nodiscard]] const Variant* FindItem(const T& vKeyIndex) const noexcept(WholePosition<T>) {
        if constexpr (WholePosition<T>) {
            const Record* const record = records_.Find(AsPosition(vKeyIndex));
            return record ? &record->Item : nullptr;
        } else {
            return FindItemNamed(NameOf(vKeyIndex));
        }
    }
    /// As Item; Quiet: nothing happens instead of 5 and 9.
    template <NamesEntry T>
    void Remove(const T& vKeyIndex, bool Quiet = false) {
        RemoveNamed(ConvertibleNameOf(vKeyIndex), Quiet);
    }

    /// The items as they stood at the first enumeration since the last Add or Clear.
    /// Kept: what Remove took away in between still shows.
    [[nodiscard]] Enumerator NewEnum();

    /// Whether a key is present; of any other value, whether it lies in 1..Count().
    /// Kept: it is compared as it stands, so 2.5 is present in a collection of three.
    template <NamesEntry T>
    [[nodiscard]] bool Exists(const T& vKeyIndex) const {
        return ExistsNamed(NameOf(vKeyIndex));
    }
    /// @{
    /// The position of a key, or -1.
    [[nodiscard]] std::int32_t Index(const Text& Key) const;
    [[nodiscard]] std::int32_t Index(const PlainKey auto& Key) const {
        return IndexNamed(NameOf(Key));
    }
    /// @}
    /// @{
    /// The key at a position, lower-cased. Raises 9 outside 1..Count().
    [[nodiscard]] Text Key(std::int32_t Position) const;
    [[nodiscard]] Text Key(OtherInteger auto Position) const { return Key(AsPosition(Position)); }
    /// @}

    [[nodiscard]] bool Sorted() const noexcept { return sorted_; }
    /// True sorts by key, O(n log^2 n) at worst; False leaves the order as it is.
    void SetSorted(bool value);

    /// What the collection is planned for: records, and slots of its hash table (always odd).
    [[nodiscard]] std::int32_t Capacity() const noexcept { return capacity_; }
    [[nodiscard]] std::int32_t TableSize() const noexcept;
    /// The hash that a table of TableSize() slots is planned with: of a key in its lower-cased
    /// form, over its first 256 units. Keys counted up (String1, String2, ...) share few values of
    /// it, so look-ups here go by the text's own hash instead.
    [[nodiscard]] static std::int32_t HashKey(const Text& Key);

    /// @{
    /// The items in position order, a sized range with random access; any change of the collection
    /// ends the pass.
    [[nodiscard]] Iterator begin() const noexcept { return {records_, nullptr, 0}; }
    [[nodiscard]] Iterator end() const noexcept { return Iterator::End(records_); }
    /// @}
    /// The same with the keys: `for (auto [key, item] : collection.Entries())`. A key with capitals
    /// is made anew, so that shows as bad_alloc when memory runs out.
    [[nodiscard]] RecordRange<Record, EntryOfRecord> Entries() const noexcept {
        return RecordRange<Record, EntryOfRecord>(records_);
    }

    /// Removes every entry for which predicate(entry) holds, in one pass, and gives their number;
    /// NewEnum's snapshot stays, as with Remove. The predicate, which is asked once of each in
    /// position order and must not use the collection, may throw, and memory may run out: then
    /// nothing changed. O(n).
    template <std::predicate<CollectionExEntry> Predicate>
    friend std::size_t erase_if(CollectionEx& collection, Predicate predicate) {
        return collection.EraseIf(predicate);
    }

    [[nodiscard]] Text TypeName() const override { return u"CollectionEx"; }
    Variant Call(std::u16string_view member, Arguments arguments = {}) override;
    Variant Get(std::u16string_view member, Arguments arguments = {}) override;
    void Set(std::u16string_view member, const Variant& value, Arguments arguments = {}) override;

    friend ZORVANE_EXPORT void swap(CollectionEx& left, CollectionEx& right) noexcept;

  private:
    void CheckIndex(std::int32_t position) const {
        const auto at = static_cast<std::uint32_t>(position) - 1;
        if (at >= static_cast<std::uint32_t>(Count())) RaisePlatform(PlatformError::OutOfRange);
    }
    template <class Predicate>
    std::size_t EraseIf(Predicate& predicate) {
        // Released at the end, when the collection is whole again.
        DoomedRecords<Record> doomed(
            records_,
            [&](const Record& record) -> bool {
                return std::invoke(predicate, EntryOfRecord::Of(record));
            },
            [&](RecordNumber number) { return IndexHash(records_.OfNumber(number).Key); });
        if (doomed.Count() == 0) return 0;
        doomed.Prepare(records_);
        doomed.TakeOut(records_, index_, [](const auto&) {});
        return doomed.Count();
    }
    [[nodiscard]] bool ExistsNamed(const Variant& vKeyIndex) const {
        if (vKeyIndex.IsText()) [[likely]]
            return FindKey(vKeyIndex.TextUnchecked()) != nullptr;
        const double value = vKeyIndex.ToDouble();
        return value >= 1 && value <= Count();
    }
    [[nodiscard]] const Variant* FindItemNamed(const Variant& vKeyIndex) const {
        if (!vKeyIndex.IsText()) return FindItem(vKeyIndex.ToLong());
        const RecordNumber* const number = FindKey(vKeyIndex.TextUnchecked());
        return number ? &records_.OfNumber(*number).Item : nullptr;
    }
    // The entry that has a key: mostly the one with the same text.
    [[nodiscard]] const RecordNumber* FindKey(const Text& key) const noexcept {
        if (!index_.IsPlain()) [[unlikely]]
            return FindStrictly(key);
        return index_.FindAmongSlots(key.FoldedHash(),
                                     [&](RecordNumber number) { return HasKey(number, key); });
    }
    [[nodiscard]] std::int32_t FindSorted(const Text& lowered) const noexcept;
    // Out of line: a look-up of the usual kind is to stay short.
    [[nodiscard]] const RecordNumber* FindStrictly(const Text& key) const noexcept;
    // Whether its key counts as this one: mostly it is the same text.
    [[nodiscard]] bool HasKey(RecordNumber number, const Text& key) const noexcept {
        return records_.OfNumber(number).Key == key || HasKeyLike(number, key);
    }
    // The same although not all units are.
    [[nodiscard]] bool HasKeyLike(RecordNumber number, const Text& key) const noexcept;
    // What the index has a key under, as given or lower-cased.
    [[nodiscard]] std::uint32_t IndexHash(const Text& key) const noexcept {
        return index_.IsStrict() ? HashExactly(key, Sameness::LowerCase) : key.FoldedHash();
    }
    [[nodiscard]] std::int32_t IndexNamed(const Variant& key) const {
        return Index(key.TextUnchecked());
    }
    [[nodiscard]] Variant ItemNamed(const Variant& vKeyIndex) const {
        return records_.OfNumber(NumberOf(vKeyIndex)).Item;
    }
    void MakeRoom();
    // The entry of a key (raises 5) or at a position (raises 9).
    [[nodiscard]] RecordNumber NumberOf(const Variant& vKeyIndex) const {
        if (!vKeyIndex.IsText()) [[unlikely]] {
            const std::int32_t position = vKeyIndex.ToLong();
            CheckIndex(position);
            return records_.NumberAt(position);
        }
        const RecordNumber* const number = FindKey(vKeyIndex.TextUnchecked());
        if (!number) RaisePlatform(PlatformError::InvalidCall);
        return *number;
    }
    [[nodiscard]] std::int32_t PlaceFor(const CollectionExAdd& options) const;
    void Rehash(std::int32_t capacity);
    void ReleaseAll() noexcept;
    void RemoveNamed(const Variant& vKeyIndex, bool Quiet);
    void SortRecords();

    RecordStore<Record> records_;
    KeyIndex index_;  // every record under the folded hash of its key, or strictly
    std::int32_t capacity_ = 1000;
    std::int32_t initialSize_ = 1000;
    std::int32_t growStep_ = 1000;
    float tableRatio_ = 2.0f;
    bool sorted_ = false;
    ItemSnapshot snapshot_;  // null until NewEnum, and again after Add and Clear
};

}  // namespace zorvane
