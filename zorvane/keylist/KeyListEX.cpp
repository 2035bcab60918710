#include "zorvane/keylist/KeyListEX.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "zorvane/runtime/FetchAhead.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLeastGranularity = 16;
constexpr std::int32_t kGreatestGranularity = 32768;
constexpr std::int32_t kClearedGranularity = 32;
constexpr std::int32_t kClearedCapacity = 2;

std::int32_t GrownCapacity(std::int32_t count, std::int32_t step) noexcept {
    const std::int64_t capacity = std::int64_t{count} + std::max(step, 0);
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(capacity, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

KeyListEX::KeyListEX() {
    Clear();
}

KeyListEX::KeyListEX(KeyListEX&& other) noexcept : KeyListEX() {
    swap(*this, other);
}

KeyListEX& KeyListEX::operator=(KeyListEX&& other) noexcept {
    KeyListEX taken(std::move(other));
    swap(*this, taken);
    return *this;
}

// While the list still stands: a release may run code that uses it, and even add to it.
KeyListEX::~KeyListEX() {
    while (Count() != 0 || snapshot_) Clear();
}

Variant KeyListEX::Add(Variant Item, Text Key, const AddOptions& Options) {
    const ItemSnapshot stale = std::exchange(snapshot_, nullptr);
    const Search found = Look(Key);
    if (found.Found && Unique()) return Fail(Failure::KeyPresent, Key, Options.ReturnItem);
    std::int32_t position = std::clamp(found.Position, 1, Count() + 1);
    if (!Sorted() && Options.NamesPlace()) {
        const Place place = PlaceBeforeOrAfter(Options, Count(),
                                               [&](const Text& key) -> std::optional<std::int32_t> {
                                                   const Search named = Look(key);
                                                   if (!named.Found) return std::nullopt;
                                                   return named.Position;
                                               });
        if (place.Wrong) return Fail(*place.Wrong, Key, Options.ReturnItem);
        position = place.Position;
    }
    const bool inOrder = Sorted() && InSearchOrder();
    // A search out of order may have missed the key.
    const bool repeated = found.Found || (!inOrder && Holder(Key));

    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.InsertKey(position, Key, inOrder, Rule());
    index_.Insert(IndexHash(Key), number);
    KeyListRecord& record = records_.OfNumber(number);
    MoveToEmpty(record.Key, Key);
    MoveToEmpty(record.Item, Item);
    if (Count() > capacity_) capacity_ = GrownCapacity(Count(), Granularity());
    NoteKeyOrder(inOrder);
    if (repeated) {
        repeats_ = true;
        hashTells_ = false;
    }
    settings_.Changed = true;
    if (Options.ReturnItem) return record.Item;
    return position;
}

void KeyListEX::Append(KeyListRecord record) {
    repeats_ = repeats_ || Holder(record.Key);
    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.InsertKey(Count() + 1, record.Key, false, Rule());
    index_.Insert(IndexHash(record.Key), number);
    records_.OfNumber(number) = std::move(record);
    capacity_ = Count();
    NoteKeyOrder(false);
}

void KeyListEX::Clear() {
    // Released at the end, when the list is whole again: the items' end may run code that uses it.
    KeyedStore<KeyListRecord> doomed;
    swap(records_, doomed);
    KeyIndex none;
    swap(index_, none);
    const ItemSnapshot stale = std::exchange(snapshot_, nullptr);
    settings_ = {.Granularity = std::max(Granularity(), kClearedGranularity)};
    capacity_ = kClearedCapacity;
    repeats_ = false;
    NoteKeyOrder(true);
    SelectKey();
}

std::span<const SortColumn> KeyListEX::Columns() noexcept {
    static constexpr std::array<SortColumn, 4> kColumns{{
        {u"key", offsetof(KeyListRecord, Key), VarType::String},
        {u"itemstring", offsetof(KeyListRecord, ItemString), VarType::String},
        {u"itemlong", offsetof(KeyListRecord, ItemLong), VarType::Long},
        {u"item", offsetof(KeyListRecord, Item), VarType::Variant},
    }};
    return kColumns;
}

Variant KeyListEX::CopyItemValue(std::int32_t Index, std::int32_t Column) const {
    if (Index <= 0) return settings_.At(Column);
    if (Index > Count()) return {};
    const KeyListRecord& record = records_.At(Index);
    switch (Column) {
        case 1:
            return record.Item;
        case 2:
            return record.ItemLong;
        case 3:
            return record.ItemString;
        case 4:
            return record.Key;
        default:
            return {};
    }
}

bool KeyListEX::Exists(Text Key, std::int32_t& Index) {
    const Search found = Look(std::move(Key));
    Index = found.Position;
    return found.Found;
}

Variant KeyListEX::Fail(Failure failure, const Text& key, bool raise) const {
    if (raise) RaiseError(failure, kAddMember, kKeyLabel, key);
    return QuietCode(failure);
}

// The number of the entry that has a key. May re-sort by key.
std::optional<RecordNumber> KeyListEX::FindKey(const Text& sought) {
    if (Count() == 0) return std::nullopt;
    const Text key = sought;  // which may live in a record that a re-sort moves
    if (Sorted()) RestoreKeyOrder();
    hashTells_ = HashTells();
    if (hashTells_) {
        const RecordNumber* const holder = Holder(key);
        return holder ? std::optional(*holder) : std::nullopt;
    }
    const Search found = Look(key);
    if (!found.Found) return std::nullopt;
    return records_.NumberAt(found.Position);
}

const RecordNumber* KeyListEX::FindStrictly(const Text& key) const noexcept {
    return index_.Find(IndexHash(key), [&](RecordNumber number) { return HasKey(number, key); });
}

// Whether a look-up by key sorts nothing and finds by hash what a search would find.
bool KeyListEX::HashTells() const noexcept {
    if (repeats_) return false;
    return !Sorted() || (sortComparer_ == KeyComparer() && InSearchOrder());
}

bool KeyListEX::HasKeyLike(RecordNumber number, const Text& key) const noexcept {
    return Mode() == CompareMode::Text &&
           EqualTexts(records_.OfNumber(number).Key, key, CompareMode::Text);
}

// Where a key stands, or belongs when it does not. May re-sort by key.
auto KeyListEX::Look(Text key) -> Search {
    if (Sorted()) {
        RestoreKeyOrder();
        if (repeats_ || !InSearchOrder()) return records_.FindKey(key, !Unique(), Rule());
        // The index is far away; the order is searched meanwhile, and mostly tells enough.
        index_.Fetch(IndexHash(key));
        const auto places = records_.PlacesFor(key);
        if (places.Empty()) return {false, places.First};
        if (const RecordNumber* const holder = Holder(key))
            return {true, records_.PositionOf(*holder)};
        return {false, records_.FirstNotBefore(key, places, Rule())};
    }
    Search first{false, Count() + 1};
    index_.ForEach(IndexHash(key), [&](RecordNumber number) {
        if (!EqualTexts(records_.OfNumber(number).Key, key, Mode())) return;
        first = {true, std::min(first.Position, records_.PositionOf(number))};
    });
    return first;
}

// For one entry more, or another key.
void KeyListEX::MakeRoom() {
    index_.Reserve(static_cast<std::uint32_t>(Count()) + 1);
    if (index_.IsCrowded()) [[unlikely]]
        Tighten();
}

Enumerator KeyListEX::NewEnum() {
    if (!snapshot_) {
        if (repeats_) {
            const auto hash = [](std::u16string_view key) {
                return HashExactly(key, Sameness::Units);
            };
            std::unordered_set<std::u16string_view, decltype(hash)> keys(0, hash);
            for (std::int32_t i = 1; i <= Count(); ++i) {
                if (!keys.insert(records_.At(i).Key.Units()).second) {
                    RaisePlatform(PlatformError::DuplicateKey);
                }
            }
        }
        snapshot_ = std::make_shared<const std::vector<Variant>>(begin(), end());
    }
    return Enumerator(snapshot_);
}

KeyListRecord KeyListEX::ReadRecord(Object& source, std::int32_t index) {
    KeyListRecord record;
    record.Item = SourceCell(source, index, 1);
    record.ItemLong = SourceCell(source, index, 2).ToLong();
    record.ItemString = SourceCell(source, index, 3).ToText();
    record.Key = SourceCell(source, index, 4).ToText();
    return record;
}

Variant KeyListEX::RemoveNamed(const Variant& vKeyIndex, bool ReturnItem) {
    // Let go at the end, as what it holds may be the last of its kind and use the list.
    const ItemSnapshot stale = std::exchange(snapshot_, nullptr);
    const bool reorders = ReordersFor(vKeyIndex);
    const Variant kept = reorders ? vKeyIndex : Variant();
    const Variant& named = reorders ? kept : vKeyIndex;
    const Entry entry = LocateEntry(named);
    if (entry.Position == 0) [[unlikely]] {
        if (ReturnItem) RaiseError(Failure::NoItem, u"::Remove", kKeyLabel, named);
        return std::int16_t{0};
    }
    if (!named.IsText()) FetchAhead(records_, index_, entry.Position);
    records_.PrepareClose(entry.Position);
    const std::uint32_t hash = IndexHashOf(entry.Number);
    // Released at the end, when the list is whole again.
    Taken<KeyListRecord> doomed(records_.OfNumber(entry.Number));
    records_.Close(entry.Position, entry.Number);
    index_.Erase(hash, entry.Number);
    GiveBackRoom(Count());
    settings_.Changed = true;
    if (ReturnItem) return std::move(doomed->Item);
    return entry.Position;
}

// Swaps a record's key for another.
void KeyListEX::Rename(RecordNumber number, Text& key) noexcept {
    KeyListRecord& record = records_.OfNumber(number);
    index_.Erase(IndexHash(record.Key), number);
    index_.Insert(IndexHash(key), number);
    swap(record.Key, key);
}

void KeyListEX::SetGranularity(std::int32_t value) noexcept {
    settings_.Granularity = std::clamp(value, kLeastGranularity, kGreatestGranularity);
}

void KeyListEX::SetKey(std::int32_t Index, Text value) {
    static_cast<void>(KeyAt(Index));  // raises where there is none
    if (Unique() && Look(value).Found) {
        RaiseError(Failure::KeyPresent, u"::Key", kKeyLabel, value);
    }
    repeats_ = repeats_ || Holder(value);
    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.NumberAt(Index);
    const bool wasInOrder = InSearchOrder();
    Rename(number, value);
    NoteKeyOrder(false);
    try {
        if (Sorted()) Sort();
    } catch (const std::bad_alloc&) {
        Rename(number, value);
        NoteKeyOrder(wasInOrder);
        throw;
    }
}

void KeyListEX::Tighten() {
    const Sameness now = Mode() == CompareMode::Binary ? Sameness::Units : Sameness::Folded;
    index_.Tighten(
        [&](RecordNumber number) { return HashExactly(records_.OfNumber(number).Key, now); });
    strictly_ = now;
}

void swap(KeyListEX& left, KeyListEX& right) noexcept {
    left.SwapRecords(right);
    swap(left.index_, right.index_);
    std::swap(left.strictly_, right.strictly_);
    std::swap(left.capacity_, right.capacity_);
    std::swap(left.repeats_, right.repeats_);
    std::swap(left.snapshot_, right.snapshot_);
}

}  // namespace zorvane
