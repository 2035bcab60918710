#pragma once
/// \class zorvane::KeyedRecords
/// What the generated keyed classes answer alike: settings, typed columns by key or position and
/// the choice of a sort column.
///
/// A class built on it supplies, as members that this base may reach:
///   Record              with Item, ItemLong, ItemString and Key
///   Columns()           the table of its sort columns
///   ReadRecord(source, i), Append(record)   for CopyFrom
///   FindRecord(v)       the record that a key or position names, or null; may re-sort
///   RemoveNamed(v, returnItem)   Remove
///   index_, IndexHashOf(number)   by which the records are found
///   NoteRemoved(doomed)   called when records (DoomedRecords) are out; must not fail
///   Renumbered(newNumberOf)   called when records got new positions and numbers; must not fail
///   kLookUpReorders     whether FindRecord may sort by key first
///   kTypeName, kItemStringMember
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <tuple>
#include <utility>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/platform/EntryName.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/Comparers.h"
#include "zorvane/runtime/DoomedRecords.h"
#include "zorvane/runtime/ErrorTable.h"
#include "zorvane/runtime/KeyedEntry.h"
#include "zorvane/runtime/RecordIterator.h"
#include "zorvane/runtime/SortRecordArray.h"
#include "zorvane/runtime/detail/KeyedMembers.h"
#include "zorvane/runtime/detail/KeyedStore.h"
#include "zorvane/runtime/detail/Settings.h"

namespace zorvane {

/// One column that records can be sorted by.
struct SortColumn {
    std::u16string_view Name;  ///< lower case
    std::size_t Offset;        ///< of the field in a record, in bytes
    VarType Type;              ///< chooses the comparer
};

template <class Derived, class Record>
class KeyedRecords : public Object {
  public:
    [[nodiscard]] bool Changed() const noexcept { return settings_.Changed; }
    void SetChanged(bool value) noexcept { settings_.Changed = value; }

    /// The class identifier, and the first half of every error source.
    [[nodiscard]] static Text ClassName() { return ClassIdentifier(Derived::kTypeName); }

    [[nodiscard]] std::int32_t Compare() const noexcept { return settings_.Compare; }
    /// Kept: the value is ignored. A stored mode other than 0 becomes 1, and as Clear stores 0 the
    /// comparison stays binary however often 1 is assigned.
    void SetCompare(std::int32_t) noexcept {
        if (settings_.Compare != 0) settings_.Compare = 1;
    }

    /// Adds several, each as Add does with ReturnItem: what fails is raised, and those before it
    /// stay.
    void Add(std::initializer_list<NewEntry> entries);

    /// Clears this one, takes the source's settings as they come and its records one by one, and
    /// sorts by key. The source is any object with the late-bound members CopyItemValue and Count.
    /// Copying from itself leaves nothing. Raises what the source raises; then what was read so far
    /// stands.
    void CopyFrom(Object& Source, bool MarkChanged = false);

    [[nodiscard]] std::int32_t Count() const noexcept { return records_.Count(); }

    /// @{
    /// Assigning does not re-sort; until the next sort a key search looks the wrong way.
    [[nodiscard]] bool Descending() const noexcept { return settings_.Descending; }
    void SetDescending(bool value) noexcept {
        settings_.Descending = value;
        hashTells_ = false;
    }
    /// @}

    /// @{
    /// Count(), as generic code asks for it.
    [[nodiscard]] std::size_t size() const noexcept { return static_cast<std::size_t>(Count()); }
    [[nodiscard]] bool empty() const noexcept { return Count() == 0; }
    /// @}

    /// A vKeyIndex names an entry: by its key, a text in any form (no Text is made of one of up to
    /// 256 units), or by its position from 1, a whole number of any type but a byte's (one that 32
    /// bits do not hold is out of range). Whatever else a tagged value holds names none.
    ///
    /// Whether it names one. May re-sort by key, as may the look-ups below, which are const in a
    /// class whose look-ups never do.
    template <NamesEntry T>
    [[nodiscard]] bool Contains(const T& vKeyIndex) {
        return Self().FindRecord(NameOf(vKeyIndex)) != nullptr;
    }

    /// The values of one entry. Raises 28500 (as Number: kObjectErrorBase + 28500) when there is no
    /// such entry. A look-up by key may re-sort by key: positions known before it are then stale.
    template <NamesEntry T>
    [[nodiscard]] Variant Item(const T& vKeyIndex) {
        if constexpr (WholePosition<T>) {
            return ItemAt(vKeyIndex);  // what loops ask by, with no tagged value made of it
        } else {
            return Find(NameOf(vKeyIndex), kItemMember).Item;
        }
    }
    /// The same where it lies, or null where there is none: nothing is copied and nothing raised.
    /// The pointer ends with the next change of the container, a look-up that re-sorts included.
    template <NamesEntry T>
    [[nodiscard]] const Variant* FindItem(const T& vKeyIndex) noexcept(WholePosition<T>) {
        if constexpr (WholePosition<T>) {
            return ItemIn(records_.Find(AsPosition(vKeyIndex)));
        } else {
            return ItemIn(Self().FindRecord(NameOf(vKeyIndex)));
        }
    }
    /// The entry itself, to read and assign its values with no look-up more.
    template <NamesEntry T>
    [[nodiscard]] FoundEntry<Record> FindEntry(const T& vKeyIndex) {
        return FoundEntry<Record>(Self().FindRecord(NameOf(vKeyIndex)));
    }
    template <NamesEntry T>
    void SetItem(const T& vKeyIndex, Variant value) {
        // The old value dies with the argument, after the entry holds the new one.
        swap(Find(NameOf(vKeyIndex), kItemMember).Item, value);
    }
    template <NamesEntry T>
    [[nodiscard]] std::int32_t ItemLong(const T& vKeyIndex) {
        return Find(NameOf(vKeyIndex), kItemLongMember).ItemLong;
    }
    template <NamesEntry T>
    void SetItemLong(const T& vKeyIndex, std::int32_t value) {
        Find(NameOf(vKeyIndex), kItemLongMember).ItemLong = value;
    }
    /// Raises 6, before anything is looked for, when the value does not fit.
    template <NamesEntry T>
    void SetItemLong(const T& vKeyIndex, OtherInteger auto value) {
        SetItemLong(vKeyIndex, Variant(value).LongUnchecked());
    }
    template <NamesEntry T>
    [[nodiscard]] Text ItemString(const T& vKeyIndex) {
        return Find(NameOf(vKeyIndex), Derived::kItemStringMember).ItemString;
    }
    template <NamesEntry T>
    void SetItemString(const T& vKeyIndex, Text value) {
        swap(Find(NameOf(vKeyIndex), Derived::kItemStringMember).ItemString, value);
    }

    /// Quiet look-ups: false and Value untouched when there is no such entry. They never raise.
    template <NamesEntry T>
    [[nodiscard]] bool ItemFn(const T& vKeyIndex, Variant& Value) {
        return Fetch(Self().FindRecord(NameOf(vKeyIndex)), &Record::Item, Value);
    }
    template <NamesEntry T>
    [[nodiscard]] bool ItemLongFn(const T& vKeyIndex, std::int32_t& Value) {
        return Fetch(Self().FindRecord(NameOf(vKeyIndex)), &Record::ItemLong, Value);
    }
    template <NamesEntry T>
    [[nodiscard]] bool ItemStringFn(const T& vKeyIndex, Text& Value) {
        return Fetch(Self().FindRecord(NameOf(vKeyIndex)), &Record::ItemString, Value);
    }

    /// @{
    /// The key at a position. Raises 28500 outside 1..Count().
    [[nodiscard]] Text Key(std::int32_t Index) const { return KeyAt(Index); }
    [[nodiscard]] Text Key(OtherInteger auto Index) const { return KeyAt(Index); }
    /// @}

    /// Removes an entry and gives its position (Long), or with ReturnItem the item. No such entry:
    /// raises 28500 with ReturnItem, else gives the Integer 0.
    template <NamesEntry T>
    Variant Remove(const T& vKeyIndex, bool ReturnItem = false) {
        return Self().RemoveNamed(NameOf(vKeyIndex), ReturnItem);
    }

    /// Sorts by the selected column in the current direction; false when none is selected or there
    /// is nothing to sort. Raises 13 when a value of "item" has no text form; then nothing moved.
    bool Sort();
    /// Selects a column by name, without regard to case, and sorts on request. A name that is
    /// unknown selects no column. Kept: whether a look-up by key re-sorts first depends on the
    /// column that is selected, not on the order that the records have; "key" and "itemstring"
    /// count as one. Kept: the result is inverted; True means that the name is unknown.
    bool SortBy(const Text& Column, bool SortNow = false);

    /// @{
    /// Assigning does not sort.
    [[nodiscard]] bool Sorted() const noexcept { return settings_.Sorted; }
    void SetSorted(bool value) noexcept {
        settings_.Sorted = value;
        hashTells_ = false;
    }
    /// @}
    [[nodiscard]] bool Unique() const noexcept { return settings_.Unique; }
    void SetUnique(bool value) noexcept { settings_.Unique = value; }

    /// Late-bound reading and calling, by property and method alike: the settings, Count,
    /// ClassName, the typed columns and Key by key or position, Clear, CopyItemValue, Exists,
    /// Remove, Sort and SortBy.
    Variant Call(std::u16string_view member, Arguments arguments = {}) override {
        return InvokeMember(Self(), KeyedMembers<Derived>(), member, arguments);
    }
    Variant Get(std::u16string_view member, Arguments arguments = {}) override {
        return InvokeMember(Self(), KeyedMembers<Derived>(), member, arguments);
    }
    [[nodiscard]] Text TypeName() const override { return Derived::kTypeName; }

    /// @{
    /// The items in position order, a sized range with random access; any change of the container
    /// ends the pass.
    using Iterator = RecordIterator<Record, ItemOfRecord>;
    [[nodiscard]] Iterator begin() const noexcept { return {records_, nullptr, 0}; }
    [[nodiscard]] Iterator end() const noexcept { return Iterator::End(records_); }
    /// @}
    /// The same with all columns: `for (auto [key, item, itemLong, itemString] : list.Entries())`.
    [[nodiscard]] RecordRange<Record, EntryOfRecord> Entries() const noexcept {
        return RecordRange<Record, EntryOfRecord>(records_);
    }

    /// Removes every entry for which predicate(entry) holds, in one pass, as Remove of each would,
    /// and gives their number. The predicate, which is asked once of each in position order and
    /// must not use the container, may throw, and memory may run out: then nothing changed. O(n).
    template <std::predicate<KeyedEntry> Predicate>
    friend std::size_t erase_if(Derived& container, Predicate predicate) {
        return static_cast<KeyedRecords&>(container).EraseIf(predicate);
    }

  protected:
    /// \cond
    using Search = typename KeyedStore<Record>::Search;

    // An entry; Position 0: none.
    struct Entry {
        RecordNumber Number = 0;
        std::int32_t Position = 0;
    };

    KeyedRecords() = default;
    KeyedRecords(const KeyedRecords&) = delete;
    KeyedRecords& operator=(const KeyedRecords&) = delete;
    void SwapRecords(KeyedRecords& other) noexcept {
        swap(records_, other.records_);
        std::swap(settings_, other.settings_);
        std::swap(sortOffset_, other.sortOffset_);
        std::swap(sortComparer_, other.sortComparer_);
        std::swap(hashTells_, other.hashTells_);
    }

    [[noreturn]] static void RaiseError(Failure failure, std::u16string_view member,
                                        std::u16string_view label, const Variant& argument) {
        RaiseFailure(failure, ClassName(), member, label, argument);
    }

    [[nodiscard]] CompareMode Mode() const noexcept {
        return settings_.Compare == 0 ? CompareMode::Binary : CompareMode::Text;
    }
    // What a key search goes by now.
    [[nodiscard]] KeyRule Rule() const noexcept { return {Mode(), settings_.Descending}; }
    [[nodiscard]] Record& Find(const Variant& vKeyIndex, const std::u16string_view& member) {
        if (ReordersFor(vKeyIndex)) [[unlikely]]
            return FindKept(vKeyIndex, member);
        if (Record* record = Self().FindRecord(vKeyIndex)) [[likely]]
            return *record;
        RaiseMissing(member, vKeyIndex);
    }
    [[nodiscard]] const Record& Find(const Variant& vKeyIndex,
                                     const std::u16string_view& member) const {
        if (const Record* const record = Self().FindRecord(vKeyIndex)) [[likely]]
            return *record;
        RaiseMissing(member, vKeyIndex);
    }
    [[nodiscard]] const Variant& ItemAt(WholePosition auto position) const {
        if (const Record* const record = records_.Find(AsPosition(position))) [[likely]]
            return record->Item;
        RaiseNoItemAt(position);
    }
    [[nodiscard]] const Text& KeyAt(WholePosition auto index) const {
        if (const Record* const record = records_.Find(AsPosition(index))) return record->Key;
        RaiseNoKeyAt(WholeNumber(index));
    }
    template <class Field>
    static bool Fetch(const Record* record, Field Record::*field, Field& value) noexcept {
        if (record) value = record->*field;
        return record != nullptr;
    }
    [[nodiscard]] static const Variant* ItemIn(const Record* record) noexcept {
        return record ? &record->Item : nullptr;
    }
    template <class Predicate>
    std::size_t EraseIf(Predicate& predicate);
    [[nodiscard]] Entry EntryAt(std::int32_t position) const noexcept {
        if (position < 1 || position > Count()) return {};
        return {records_.NumberAt(position), position};
    }
    // The record at a position; null outside 1..Count().
    [[nodiscard]] Record* AtPosition(std::int32_t position) noexcept {
        return records_.Find(position);
    }
    // Whether looking this up sorts first, which may pull an argument away that lives in a record.
    [[nodiscard]] bool ReordersFor(const Variant& vKeyIndex) const noexcept {
        return Derived::kLookUpReorders && !hashTells_ && sortComparer_ != KeyComparer() &&
               vKeyIndex.IsText();
    }
    // True when a key search would find the records in the order that it assumes.
    [[nodiscard]] bool InSearchOrder() const noexcept { return records_.InOrder(Rule()); }
    [[noreturn]] static void RaiseNoKeyAt(const Variant& index) {
        RaiseError(Failure::NoItem, u"::Key", kIndexLabel, index);
    }
    // Records that the keys stand in the order that a search assumes now, or in none.
    void NoteKeyOrder(bool ordered) noexcept {
        if (!ordered) hashTells_ = false;
        records_.NoteOrder(ordered, Rule());
    }
    // Kept: a key search re-sorts only when the selected comparer differs from the key's. Keys and
    // ItemString share one, so records sorted by ItemString are searched as if ordered by key.
    void RestoreKeyOrder() {
        if (sortComparer_ == KeyComparer()) return;
        const auto column = std::make_pair(sortOffset_, sortComparer_);
        SelectKey();
        try {
            Sort();
        } catch (...) {
            // The next search has to try again: in this order it would miss keys.
            std::tie(sortOffset_, sortComparer_) = column;
            throw;
        }
    }
    // Sort, with fieldAt(i) as the address of the selected column in the record at position i + 1.
    bool SortByFields(const std::function<const void*(std::uint32_t)>& fieldAt);
    // Selects the column at an offset in records; a null comparer selects none.
    void Select(std::size_t offset, modZorvane::Comparer comparer) noexcept {
        sortOffset_ = offset;
        sortComparer_ = comparer;
        hashTells_ = false;
    }
    void SelectKey() noexcept { Select(offsetof(Record, Key), KeyComparer()); }

    // Whatever else is compared by it is taken for the key.
    [[nodiscard]] static modZorvane::Comparer KeyComparer() noexcept {
        return modZorvane::CompareString;
    }
    // Constants, since a compiler would measure such literals at each call.
    static constexpr std::u16string_view kAddMember = u"::Add";
    static constexpr std::u16string_view kItemMember = u"::Item";
    static constexpr std::u16string_view kItemLongMember = u"::ItemLong";

    KeyedStore<Record> records_;
    Settings settings_;
    std::size_t sortOffset_ = 0;
    modZorvane::Comparer sortComparer_ = nullptr;  // null = no column selected
    // Noted by a class that may answer by hash or search: a look-up by key goes by hash, until
    // something changes that the choice depends on.
    bool hashTells_ = false;

  private:
    [[nodiscard]] Record& FindKept(const Variant kept, const std::u16string_view& member) {
        if (Record* record = Self().FindRecord(kept)) return *record;
        RaiseMissing(member, kept);
    }
    // Takes what it needs by reference: whoever finds an entry shall have nothing to prepare.
    [[noreturn, gnu::noinline]] static void RaiseMissing(const std::u16string_view& member,
                                                         const Variant& vKeyIndex) {
        RaiseError(Failure::NoItem, member, kKeyIndexLabel, vKeyIndex);
    }
    [[noreturn, gnu::noinline]] static void RaiseNoItemAt(WholePosition auto position) {
        RaiseMissing(kItemMember, WholeNumber(position));
    }
    Derived& Self() noexcept { return static_cast<Derived&>(*this); }
    const Derived& Self() const noexcept { return static_cast<const Derived&>(*this); }
    /// \endcond
};
/// \cond

template <class Derived, class Record>
void KeyedRecords<Derived, Record>::Add(std::initializer_list<NewEntry> entries) {
    for (const NewEntry& entry : entries) {
        const Variant added = Self().Add(entry.Item, entry.Key);
        if (added.Type() != VarType::Long) {
            const bool inUse = added == Variant(QuietCode(Failure::KeyPresent));
            RaiseError(inUse ? Failure::KeyPresent : Failure::Unknown, kAddMember, kKeyLabel,
                       entry.Key);
        }
        // What Add let go of may have used the container, too.
        Record* const record = AtPosition(added.LongUnchecked());
        if (!record) continue;
        record->ItemLong = entry.ItemLong;
        record->ItemString = entry.ItemString;
    }
}

template <class Derived, class Record>
void KeyedRecords<Derived, Record>::CopyFrom(Object& Source, bool MarkChanged) {
    Self().Clear();
    settings_.ReadFrom(Source);
    // What the source's own members added meanwhile is told apart as other settings had it.
    if constexpr (requires { Self().FollowCompare(); }) Self().FollowCompare();
    const std::int32_t count = SourceCount(Source);
    for (std::int32_t i = 1; i <= count; ++i) Self().Append(Self().ReadRecord(Source, i));
    SelectKey();
    Sort();
    if (MarkChanged) settings_.Changed = true;
}

template <class Derived, class Record>
template <class Predicate>
std::size_t KeyedRecords<Derived, Record>::EraseIf(Predicate& predicate) {
    // Released at the end, when the container is whole again.
    DoomedRecords<Record> doomed(
        records_,
        [&](const Record& record) -> bool {
            return std::invoke(predicate, EntryOfRecord::Of(record));
        },
        [&](RecordNumber number) { return Self().IndexHashOf(number); });
    if (doomed.Count() == 0) return 0;
    doomed.Prepare(records_);
    doomed.TakeOut(records_, Self().index_, [](const auto&) {});
    settings_.Changed = true;
    Self().NoteRemoved(doomed);
    return doomed.Count();
}

template <class Derived, class Record>
bool KeyedRecords<Derived, Record>::Sort() {
    return SortByFields([&](std::uint32_t i) -> const void* {
        const auto* record = &records_.At(static_cast<std::int32_t>(i) + 1);
        return reinterpret_cast<const std::byte*>(record) + sortOffset_;
    });
}

template <class Derived, class Record>
bool KeyedRecords<Derived, Record>::SortByFields(
    const std::function<const void*(std::uint32_t)>& fieldAt) {
    if (Count() < 1 || !sortComparer_) return false;
    const auto order =
        modZorvane::SortedOrder(static_cast<std::size_t>(Count()), fieldAt, sortComparer_,
                                settings_.Compare, settings_.Descending);
    records_.Reorder(order, [&](auto&& newNumberOf) { Self().Renumbered(newNumberOf); });
    NoteKeyOrder(sortOffset_ == offsetof(Record, Key));
    return true;
}

template <class Derived, class Record>
bool KeyedRecords<Derived, Record>::SortBy(const Text& Column, bool SortNow) {
    const Text name = LowerCase(Column);
    for (const SortColumn& column : Derived::Columns()) {
        if (name.Units() != column.Name) continue;
        Select(column.Offset, modZorvane::ComparerForType(column.Type));
        if (SortNow) Self().Sort();
        return false;
    }
    Select(0, nullptr);
    return true;
}

/// \endcond
}  // namespace zorvane
