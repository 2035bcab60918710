#pragma once
/// \class zorvane::KeyListEX
/// Records under one text key, kept in key order and re-sortable by any column.
///
/// While Sorted() and only Add and Remove are used, keys follow Compare() and Descending(), and
/// while Unique() too no two are equal; sorted by "item" or "itemlong", keys are in order again
/// from the next look-up by key or Add on. Kept: assigning Sorted, Descending or Unique sorts and
/// checks nothing, and neither does selecting "key" or "itemstring" restore the order of keys;
/// until the next sort by key, searches may then miss keys that are there, and Add may repeat one.
/// A look-up by key may re-sort: look-ups are not const, and earlier positions go stale. Cost:
/// look-up by key and by position O(1) to O(log n), Add and Remove O(log n) comparisons and the
/// move of at most a block of 4-byte numbers, whatever the count; while k entries share a key, O(k)
/// more for any. A sort, and so SetKey while Sorted, O(n log n), in integers O(n log^2 n) where
/// values tie.
///
/// When memory runs out, std::bad_alloc leaves Add, Remove and assignments as if never called, but
/// that entries sorted by "item" or "itemlong" may be in the order of keys already, as after a
/// look-up: their positions are then stale.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Enumerator.h"
#include "zorvane/runtime/AddOptions.h"
#include "zorvane/runtime/KeyIndex.h"
#include "zorvane/runtime/KeyedRecords.h"

namespace zorvane {

struct KeyListRecord {
    using Relocatable = void;
    Variant Item;
    std::int32_t ItemLong = 0;
    Text ItemString;
    Text Key;
};

class ZORVANE_EXPORT KeyListEX : public KeyedRecords<KeyListEX, KeyListRecord> {
  public:
    KeyListEX();
    /// With these entries; raises what Add raises: `KeyListEX list{{"Ada", "programs", 1815}}`.
    KeyListEX(std::initializer_list<NewEntry> entries) : KeyListEX() { Add(entries); }
    KeyListEX(KeyListEX&& other) noexcept;
    KeyListEX& operator=(KeyListEX&& other) noexcept;
    KeyListEX(const KeyListEX&) = delete;  ///< CopyFrom copies
    KeyListEX& operator=(const KeyListEX&) = delete;
    ~KeyListEX() override;

    /// Adds Item under Key and gives its position (Long), or with ReturnItem the item. While Sorted
    /// the place follows from the key and Before and After are ignored; otherwise the entry goes
    /// where they say, or to the end. Unless they say so, a repeated key (Unique False) goes in
    /// front of the first of its equals.
    /// Position of the options is not used. Before may be Count()+1 and After 0. ItemLong and
    /// ItemString of the new entry are 0 and "". Fails when the key is in use (28501), Before or
    /// After is out of range (28502) or names no entry or is neither key nor position (28503):
    /// raised with ReturnItem, else returned as the Integer -28501, -28500 or -28503. A failure
    /// adds nothing.
    Variant Add(Variant Item, Text Key, const AddOptions& Options = {});
    using KeyedRecords::Add;

    /// Slots in the store: an addition that finds it full makes it Granularity more than Count()
    /// then is; it shrinks to Count() when more than Granularity slots stand spare after a removal
    /// that leaves something.
    [[nodiscard]] std::int32_t Capacity() const noexcept { return capacity_; }

    /// Removes every entry and restores every setting but Granularity.
    /// Kept: Clear lifts Granularity to 32 although assignment accepts 16.
    void Clear();

    /// Column 1..4 of an entry (Item, ItemLong, ItemString, Key), or with Index <= 0 setting 1..6
    /// (Changed, Compare, Descending, Granularity, Sorted, Unique). Empty for anything out of
    /// range.
    [[nodiscard]] Variant CopyItemValue(std::int32_t Index, std::int32_t Column) const;

    /// Whether an entry has the key; Index receives its position (the first of equal keys when
    /// Unique is False), else where the key belongs: its place while Sorted, Count()+1 otherwise.
    [[nodiscard]] bool Exists(Text Key, std::int32_t& Index);

    [[nodiscard]] std::int32_t Granularity() const noexcept { return settings_.Granularity; }
    void SetGranularity(std::int32_t value) noexcept;  ///< clamped to 16..32768

    /// Renames an entry and, while Sorted, re-sorts by the current column. Raises 28500 outside
    /// 1..Count() and, while Unique, 28501 when the key is in use, be it by the entry itself.
    /// Raises 13, renamed already, when it re-sorts by an item that has no text form. Kept: while
    /// ordered by another column, the search for the new key re-sorts first, and the entry that
    /// then stands at the position is the one renamed.
    void SetKey(std::int32_t Index, Text value);
    void SetKey(OtherInteger auto Index, Text value) {
        static_cast<void>(KeyAt(Index));  // raises where there is none
        SetKey(AsPosition(Index), std::move(value));
    }

    /// The items as they stood when the first enumeration since the last Add, Remove or Clear
    /// began. Kept: assignments and sorts in between do not show. Raises 457 when a key occurs
    /// twice, unit for unit.
    [[nodiscard]] Enumerator NewEnum();

    friend ZORVANE_EXPORT void swap(KeyListEX& left, KeyListEX& right) noexcept;

  private:
    friend class KeyedRecords<KeyListEX, KeyListRecord>;
    static constexpr bool kLookUpReorders = true;
    static constexpr const char16_t* kTypeName = u"KeyListEX";
    static constexpr std::u16string_view kItemStringMember = u"::ItemString";

    void Append(KeyListRecord record);
    [[nodiscard]] static std::span<const SortColumn> Columns() noexcept;
    Variant Fail(Failure failure, const Text& key, bool raise) const;
    [[nodiscard]] std::optional<RecordNumber> FindKey(const Text& sought);
    [[nodiscard]] Entry LocateEntry(const Variant& vKeyIndex) {
        if (!vKeyIndex.IsText()) return EntryAt(Classify(vKeyIndex).Position);
        const auto number = FindKey(vKeyIndex.TextUnchecked());
        return number ? Entry{*number, records_.PositionOf(*number)} : Entry{};
    }
    [[nodiscard]] KeyListRecord* FindRecord(const Variant& vKeyIndex) {
        if (!vKeyIndex.IsText()) [[unlikely]]
            return AtPosition(Classify(vKeyIndex).Position);
        const Text& key = vKeyIndex.TextUnchecked();
        if (hashTells_) [[likely]] {
            const RecordNumber* const holder = Holder(key);
            return holder ? &records_.OfNumber(*holder) : nullptr;
        }
        const auto number = FindKey(key);
        return number ? &records_.OfNumber(*number) : nullptr;
    }
    // Behind a change of Compare.
    void FollowCompare() {
        if (index_.IsStrict()) Tighten();
    }
    // Out of line: a look-up of the usual kind is to stay short.
    [[nodiscard]] const RecordNumber* FindStrictly(const Text& key) const noexcept;
    [[nodiscard]] bool HashTells() const noexcept;
    // Whether its key counts as this one: mostly it is the same text.
    [[nodiscard]] bool HasKey(RecordNumber number, const Text& key) const noexcept {
        return records_.OfNumber(number).Key == key || HasKeyLike(number, key);
    }
    // The same although not all units are.
    [[nodiscard]] bool HasKeyLike(RecordNumber number, const Text& key) const noexcept;
    // Some entry that has the key, whatever the order: mostly the one with the same text.
    [[nodiscard]] const RecordNumber* Holder(const Text& key) const noexcept {
        if (!index_.IsPlain()) [[unlikely]]
            return FindStrictly(key);
        return index_.FindAmongSlots(key.FoldedHash(),
                                     [&](RecordNumber number) { return HasKey(number, key); });
    }
    // What the index has a key under.
    [[nodiscard]] std::uint32_t IndexHash(const Text& key) const noexcept {
        return index_.IsStrict() ? HashExactly(key, strictly_) : key.FoldedHash();
    }
    [[nodiscard]] std::uint32_t IndexHashOf(RecordNumber number) const noexcept {
        return IndexHash(records_.OfNumber(number).Key);
    }
    // When so many are left by a removal.
    void GiveBackRoom(std::int32_t count) noexcept {
        const std::int64_t spare = std::int64_t{capacity_} - count;
        if (count > 0 && spare > Granularity()) capacity_ = count;
    }
    [[nodiscard]] Search Look(Text key);
    void MakeRoom();
    void NoteRemoved(const DoomedRecords<KeyListRecord>& doomed) noexcept {
        auto count = Count() + static_cast<std::int32_t>(doomed.Count());
        while (count-- != Count()) GiveBackRoom(count);
        snapshot_.reset();
    }
    [[nodiscard]] static KeyListRecord ReadRecord(Object& source, std::int32_t index);
    Variant RemoveNamed(const Variant& vKeyIndex, bool ReturnItem);
    void Rename(RecordNumber number, Text& key) noexcept;
    template <class NewNumberOf>
    void Renumbered(NewNumberOf&& newNumberOf) noexcept {
        index_.Renumber(newNumberOf);
    }
    void Tighten();

    KeyIndex index_;  // every record under the folded hash of its key, or strictly
    Sameness strictly_ = Sameness::Units;  // as Mode() was when the index was tightened
    std::int32_t capacity_ = 0;
    bool repeats_ = false;   // a key may occur twice
    ItemSnapshot snapshot_;  // null until NewEnum, and again after Add, Remove and Clear
};

}  // namespace zorvane
