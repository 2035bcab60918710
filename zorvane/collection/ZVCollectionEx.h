#pragma once
/// \class zorvane::ZVCollectionEx
/// Records under one text key, found through a hash, optionally kept sorted.
///
/// Between public calls: every key is indexed and, unless a source of CopyFrom repeated one, occurs
/// once; while Sorted() and only Add and Remove are used, keys follow Compare() and Descending();
/// sorted by a column of numbers or "item", keys are in order again from the next Add on. Kept:
/// assigning Sorted or Descending sorts nothing, and neither does selecting "key" or "itemstring"
/// restore the order of keys; until the next sort by key, the binary search looks the wrong way,
/// while look-ups go by hash and miss nothing. Two keys are the
/// same when their hash codes are equal and their texts are equal without regard to case; as the
/// hash code regards case, "alpha" and "Alpha" are two keys, and neither finds the other. Kept: it
/// forgets the case of what stands more than 25 units before a key's end, or behind its first 128
/// units, so that long keys which differ there alone are one key. Cost: look-up by key and by
/// position O(1), Add and Remove O(1) at the ends and the move of at most a block of 4-byte numbers
/// elsewhere; sorted insertion O(log n) comparisons; a sort O(n log^2 n) at worst.
///
/// When memory runs out, std::bad_alloc leaves Add, Remove and assignments as if never called, but
/// that an Add while Sorted() may have sorted entries by key already that stood in the order of a
/// column of numbers or "item": their positions are then stale.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

#include "zorvane/collection/detail/MadeOnce.h"
#include "zorvane/platform/Build.h"
#include "zorvane/platform/Enumerator.h"
#include "zorvane/runtime/AddOptions.h"
#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/KeyedRecords.h"

namespace zorvane {

struct CollectionRecord {
    using Relocatable = void;
    Variant Item;
    Text Key;
    Text ItemString;
    std::uint64_t AddedAt = 0;  ///< counts additions: who was seated after whom
    std::int32_t ItemLong = 0;
};

class ZORVANE_EXPORT ZVCollectionEx : public KeyedRecords<ZVCollectionEx, CollectionRecord> {
  public:
    ZVCollectionEx();
    /// With these entries; raises what Add raises.
    ZVCollectionEx(std::initializer_list<NewEntry> entries) : ZVCollectionEx() { Add(entries); }
    ZVCollectionEx(ZVCollectionEx&& other) noexcept;
    ZVCollectionEx& operator=(ZVCollectionEx&& other) noexcept;
    ZVCollectionEx(const ZVCollectionEx&) = delete;  ///< CopyFrom copies
    ZVCollectionEx& operator=(const ZVCollectionEx&) = delete;
    ~ZVCollectionEx() override;

    /// Adds Item under Key and gives its position (Long), or with ReturnItem the item. While Sorted
    /// the place follows from the key; otherwise from Before, After or Position (1..Count()+1),
    /// else the end; Before may be Count()+1 and After 0. An empty key is replaced by a generated
    /// one unless Sorted. ItemLong and ItemString of the new entry are 0 and "". Fails when the key
    /// is in use (28501, whatever Unique says), when Before or After names no entry or is neither
    /// key nor position (28503), and when it leads out of range or the key of a sorted collection
    /// is empty (28502): raised with ReturnItem, else returned as the Integer -28501, -28503 or
    /// -28500. A failure adds nothing, but may have grown the store or restored key order.
    Variant Add(Variant Item, Text Key, const AddOptions& Options = {});
    using KeyedRecords::Add;

    /// Whether an entry has the key, by binary search; Index receives its position, or where the
    /// key belongs. Re-sorts by key first when another comparer is selected.
    [[nodiscard]] bool BinaryExists(Text Key, std::int32_t& Index);

    /// Records in the store before it grows. Slots of the hash table: twice as many and one.
    [[nodiscard]] std::int32_t Capacity() const noexcept { return capacity_; }

    /// Removes every entry and restores every setting; Granularity is raised to 128 if below.
    void Clear();

    /// Column 1..6 of an entry (HashCode, HashIndex, Item, ItemLong, ItemString, Key), or with
    /// Index <= 0 setting 1..6 (Changed, Compare, Descending, Granularity, Sorted, Unique). Empty
    /// for anything out of range. HashIndex: O(Count()) for the first after a change, then O(1).
    [[nodiscard]] Variant CopyItemValue(std::int32_t Index, std::int32_t Column) const;

    /// As in a key list, and look-ups never re-sort here.
    template <NamesEntry T>
    [[nodiscard]] bool Contains(const T& vKeyIndex) const noexcept(kNamesAtOnce<T>) {
        return FindRecord(NameOf(vKeyIndex)) != nullptr;
    }
    using KeyedRecords::FindEntry;
    template <NamesEntry T>
    [[nodiscard]] FoundEntry<const CollectionRecord> FindEntry(const T& vKeyIndex) const
        noexcept(kNamesAtOnce<T>) {
        return FoundEntry(FindRecord(NameOf(vKeyIndex)));
    }
    template <NamesEntry T>
    [[nodiscard]] const Variant* FindItem(const T& vKeyIndex) const noexcept(kNamesAtOnce<T>) {
        if constexpr (WholePosition<T>) {
            return ItemIn(records_.Find(AsPosition(vKeyIndex)));
        } else {
            return ItemIn(FindRecord(NameOf(vKeyIndex)));
        }
    }
    template <NamesEntry T>
    [[nodiscard]] Variant Item(const T& vKeyIndex) const {
        if constexpr (WholePosition<T>) {
            return ItemAt(vKeyIndex);
        } else {
            return Find(NameOf(vKeyIndex), kItemMember).Item;
        }
    }
    template <NamesEntry T>
    [[nodiscard]] std::int32_t ItemLong(const T& vKeyIndex) const {
        return Find(NameOf(vKeyIndex), kItemLongMember).ItemLong;
    }
    template <NamesEntry T>
    [[nodiscard]] Text ItemString(const T& vKeyIndex) const {
        return Find(NameOf(vKeyIndex), kItemStringMember).ItemString;
    }
    template <NamesEntry T>
    [[nodiscard]] bool ItemFn(const T& vKeyIndex, Variant& Value) const noexcept(kNamesAtOnce<T>) {
        return Fetch(FindRecord(NameOf(vKeyIndex)), &CollectionRecord::Item, Value);
    }
    template <NamesEntry T>
    [[nodiscard]] bool ItemLongFn(const T& vKeyIndex, std::int32_t& Value) const
        noexcept(kNamesAtOnce<T>) {
        return Fetch(FindRecord(NameOf(vKeyIndex)), &CollectionRecord::ItemLong, Value);
    }
    template <NamesEntry T>
    [[nodiscard]] bool ItemStringFn(const T& vKeyIndex, Text& Value) const
        noexcept(kNamesAtOnce<T>) {
        return Fetch(FindRecord(NameOf(vKeyIndex)), &CollectionRecord::ItemString, Value);
    }

    /// Whether a key or position names an entry. A key: Index receives its position, or Count()+1.
    /// A position leaves Index as it is. Never re-sorts.
    template <NamesEntry T>
    [[nodiscard]] bool Exists(const T& vKeyIndex, std::int32_t& Index) const {
        return ExistsNamed(NameOf(vKeyIndex), Index);
    }

    [[nodiscard]] std::int32_t Granularity() const noexcept { return settings_.Granularity; }
    /// Clamped to 128..32768; sets the capacity to Count() + Granularity.
    void SetGranularity(std::int32_t value);

    /// The items in position order as they stand now.
    [[nodiscard]] Enumerator NewEnum() const;

    bool Sort();

    friend ZORVANE_EXPORT void swap(ZVCollectionEx& left, ZVCollectionEx& right) noexcept;

  private:
    friend class KeyedRecords<ZVCollectionEx, CollectionRecord>;
    static constexpr bool kLookUpReorders = false;
    static constexpr const char16_t* kTypeName = u"ZVCollectionEx";
    // Kept: the source of ItemString's errors has a small s here.
    static constexpr std::u16string_view kItemStringMember = u"::Itemstring";

    // A record as CopyFrom reads it.
    struct SourceRecord {
        CollectionRecord Record;
        std::int32_t HashCode = 0;
    };
    // A hash code that came from a source and is not the key's own; 0: no more.
    struct ForeignCode {
        RecordNumber Number = 0;
        std::int32_t HashCode = 0;
    };
    // Columns that are in no record; they are made when asked for.
    static constexpr std::size_t kHashCodeColumn = sizeof(CollectionRecord);
    static constexpr std::size_t kHashIndexColumn = sizeof(CollectionRecord) + 1;

    void Append(SourceRecord source);
    [[nodiscard]] static std::span<const SortColumn> Columns() noexcept;
    [[nodiscard]] bool ExistsNamed(const Variant& vKeyIndex, std::int32_t& Index) const;
    Variant Fail(Failure failure, const Text& key, bool raise) const;
    [[nodiscard]] Entry LocateEntry(const Variant& vKeyIndex) const noexcept {
        if (!vKeyIndex.IsText()) return EntryAt(Classify(vKeyIndex).Position);
        const RecordNumber* const holder = Holder(vKeyIndex.TextUnchecked());
        return holder ? Entry{*holder, records_.PositionOf(*holder)} : Entry{};
    }
    [[nodiscard]] CollectionRecord* FindRecord(const Variant& vKeyIndex) noexcept {
        return const_cast<CollectionRecord*>(std::as_const(*this).FindRecord(vKeyIndex));
    }
    [[nodiscard]] const CollectionRecord* FindRecord(const Variant& vKeyIndex) const noexcept {
        if (!vKeyIndex.IsText()) [[unlikely]]
            return records_.Find(Classify(vKeyIndex).Position);
        const RecordNumber* const number = Holder(vKeyIndex.TextUnchecked());
        return number ? &records_.OfNumber(*number) : nullptr;
    }
    // Out of line: a look-up of the usual kind is to stay short.
    [[nodiscard]] const RecordNumber* FindStrictly(const Text& key) const noexcept;
    [[nodiscard]] Text GeneratedKey() const;
    [[nodiscard]] std::int32_t HashCodeOf(RecordNumber number) const noexcept;
    // The record that has the key: mostly the one with the same text.
    [[nodiscard]] const RecordNumber* Holder(const Text& key) const noexcept {
        if (!index_.IsPlain()) [[unlikely]]
            return FindStrictly(key);
        return index_.FindAmongSlots(key.FoldedHash(),
                                     [&](RecordNumber number) { return HasKey(number, key); });
    }
    // Whether its key counts as this one: mostly it is the same text.
    [[nodiscard]] bool HasKey(RecordNumber number, const Text& key) const noexcept {
        if (records_.OfNumber(number).Key == key && foreignCodes_.empty()) [[likely]]
            return true;
        return HasKeyLike(number, key);
    }
    // The same with every hash code looked at.
    [[nodiscard]] bool HasKeyLike(RecordNumber number, const Text& key) const noexcept;
    // What the index has a key under.
    [[nodiscard]] std::uint32_t IndexHash(const Text& key) const noexcept {
        return index_.IsStrict() ? StrictHash(key) : key.FoldedHash();
    }
    [[nodiscard]] std::uint32_t IndexHashOf(RecordNumber number) const noexcept {
        return index_.IsStrict() ? StrictHashOf(number)
                                 : records_.OfNumber(number).Key.FoldedHash();
    }
    void MakeRoom();
    void NoteRemoved(const DoomedRecords<CollectionRecord>& doomed) noexcept {
        doomed.ForEach([&](RecordNumber number) { NoteForeignCode(number, 0); });
        seats_.Drop();
    }
    void NoteForeignCode(RecordNumber number, std::int32_t hashCode) noexcept;
    [[nodiscard]] static SourceRecord ReadRecord(Object& source, std::int32_t index);
    void Rehash(std::int32_t capacity) noexcept;
    Variant RemoveNamed(const Variant& vKeyIndex, bool ReturnItem);
    template <class NewNumberOf>
    void Renumbered(NewNumberOf&& newNumberOf) noexcept {
        index_.Renumber(newNumberOf);
        RenumberCodes(newNumberOf);
        Rehash(capacity_);
    }
    void RenumberCodes(const std::function<RecordNumber(RecordNumber)>& newNumberOf) noexcept;
    [[nodiscard]] static std::uint32_t StrictHash(const Text& key) noexcept;
    [[nodiscard]] std::uint32_t StrictHashOf(RecordNumber number) const noexcept;
    // HashIndex of every entry, by position.
    [[nodiscard]] std::vector<std::int32_t> SeatRecords() const;
    [[nodiscard]] const std::vector<std::int32_t>& Seats() const {
        return seats_.Get([&] { return SeatRecords(); });
    }

    KeyIndex index_;  // every record under the folded hash of its key; strict: with its hash code
    std::int32_t capacity_ = 0;
    std::uint64_t additions_ = 0;
    std::uint64_t rehashedAt_ = 0;           // records added before are seated in position order
    std::vector<ForeignCode> foreignCodes_;  // by number
    MadeOnce<std::vector<std::int32_t>> seats_;
};

}  // namespace zorvane
