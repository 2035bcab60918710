#include "zorvane/collection/CollectionEx.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/LateBound.h"
#include "zorvane/platform/NumberText.h"
#include "zorvane/runtime/FetchAhead.h"
#include "zorvane/runtime/SortRecordArray.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLeastSize = 20;
constexpr float kLeastRatio = 1.5f;
constexpr std::size_t kHashedUnits = 256;
constexpr std::uint32_t kHashMask = 0x3FFFFFFF;
constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();
// A planned capacity is an announcement: beyond this, room is made as entries come.
constexpr std::int32_t kRoomAtOnce = 1 << 16;

}  // namespace

void CollectionEx::SetMemory(std::int32_t InitialSize, std::int32_t GrowStep, float TableRatio) {
    const std::int32_t size = std::max(InitialSize, kLeastSize);
    Rehash(std::max(size, Count()));  // may fail, so it comes first
    initialSize_ = size;
    tableRatio_ = TableRatio >= kLeastRatio ? TableRatio : kLeastRatio;
    growStep_ = GrowStep < kLeastSize ? initialSize_ : GrowStep;
    ItemSnapshot stale;
    if (Count() == 0) stale = std::exchange(snapshot_, nullptr);
}

void CollectionEx::Clear() noexcept {
    capacity_ = initialSize_;
    ReleaseAll();
}

void CollectionEx::Add(Variant Item, Text Key, const CollectionExAdd& Options) {
    // Let go at the end, when everything stands: a release may run code that uses this collection.
    ItemSnapshot stale;
    if (const RecordNumber* const present = FindKey(Key)) {
        if (!Options.Replace) RaisePlatform(PlatformError::DuplicateKey);
        swap(records_.OfNumber(*present).Item, Item);
        stale = std::exchange(snapshot_, nullptr);
        return;
    }
    if (Count() == capacity_) {
        Rehash(static_cast<std::int32_t>(
            std::min(std::int64_t{capacity_} + growStep_, std::int64_t{kGreatest})));
    }
    Text key = sorted_ ? LowerCase(Key) : std::move(Key);
    const std::int32_t position = sorted_ ? FindSorted(key) : PlaceFor(Options);

    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.Insert(position);
    index_.Insert(IndexHash(key), number);
    Record& record = records_.OfNumber(number);
    MoveToEmpty(record.Key, key);
    MoveToEmpty(record.Item, Item);
    stale = std::exchange(snapshot_, nullptr);
}

// Where an unsorted collection puts a new entry.
std::int32_t CollectionEx::PlaceFor(const CollectionExAdd& options) const {
    if (options.Before && options.After) RaisePlatform(PlatformError::InvalidCall);
    if (options.Before) return records_.PositionOf(NumberOf(*options.Before));
    if (options.After) return records_.PositionOf(NumberOf(*options.After)) + 1;
    return Count() + 1;
}

void CollectionEx::RemoveNamed(const Variant& vKeyIndex, bool Quiet) {
    std::int32_t position = 0;
    if (vKeyIndex.IsText()) {
        const RecordNumber* const number = FindKey(vKeyIndex.TextUnchecked());
        if (!number && Quiet) return;
        if (!number) RaisePlatform(PlatformError::InvalidCall);
        position = records_.PositionOf(*number);
    } else {
        position = vKeyIndex.ToLong();
        if (Quiet && (position < 1 || position > Count())) return;
        CheckIndex(position);
        FetchAhead(records_, index_, position);
    }
    records_.PrepareClose(position);
    const RecordNumber number = records_.NumberAt(position);
    const std::uint32_t hash = IndexHash(records_.OfNumber(number).Key);
    // Released at the end, when the collection is whole again.
    Taken<Record> doomed(records_.OfNumber(number));
    records_.Close(position, number);
    index_.Erase(hash, number);
}

// For one entry more.
void CollectionEx::MakeRoom() {
    index_.Reserve(static_cast<std::uint32_t>(Count()) + 1);
    if (!index_.IsCrowded()) [[likely]]
        return;
    index_.Tighten([&](RecordNumber number) {
        return HashExactly(records_.OfNumber(number).Key, Sameness::LowerCase);
    });
}

Enumerator CollectionEx::NewEnum() {
    if (!snapshot_) snapshot_ = std::make_shared<const std::vector<Variant>>(begin(), end());
    return Enumerator(snapshot_);
}

std::int32_t CollectionEx::Index(const Text& Key) const {
    const RecordNumber* const number = FindKey(Key);
    return number ? records_.PositionOf(*number) : -1;
}

Text CollectionEx::Key(std::int32_t Position) const {
    CheckIndex(Position);
    return LowerCase(records_.At(Position).Key);
}

void CollectionEx::SetSorted(bool value) {
    if (value == sorted_) return;
    if (value) SortRecords();
    sorted_ = value;
}

std::int32_t CollectionEx::TableSize() const noexcept {
    const double slots = static_cast<double>(tableRatio_) * capacity_;
    return static_cast<std::int32_t>(RoundHalfEvenSaturating(slots, 0, kGreatest)) | 1;
}

const RecordNumber* CollectionEx::FindStrictly(const Text& key) const noexcept {
    return index_.Find(IndexHash(key), [&](RecordNumber number) { return HasKey(number, key); });
}

std::int32_t CollectionEx::HashKey(const Text& Key) {
    const Text lowered = LowerCase(Key);
    const std::u16string_view units = lowered.Units().substr(0, kHashedUnits);
    if (units.empty()) return 17;
    // Kept: the first unit counts as a signed 16-bit sum, so a key of one unit may hash below 0.
    const auto first = static_cast<std::int16_t>(static_cast<std::uint16_t>(units[0] + 17));
    auto hash = static_cast<std::uint32_t>(std::int32_t{first});
    for (const char16_t unit : units.substr(1)) hash = (unit + 2 * hash) & kHashMask;
    return static_cast<std::int32_t>(hash);
}

Variant CollectionEx::Call(std::u16string_view member, Arguments arguments) {
    using C = CollectionEx;
    using A = Arguments;
    static constexpr auto optional = [](A a, std::size_t i) {
        return i < a.size() && !a[i].IsEmpty() ? std::optional<Variant>(a[i]) : std::nullopt;
    };
    static constexpr LateMember<C> kMembers[] = {
        {u"SetMemory", 3,
         [](C& c, A a) -> Variant {
             return c.SetMemory(a[0].ToLong(), a[1].ToLong(), a[2].ToSingle()), Variant();
         }},
        {u"Clear", 0, [](C& c, A) -> Variant { return c.Clear(), Variant(); }},
        {u"Count", 0, [](C& c, A) -> Variant { return c.Count(); }},
        {u"Add", 2,
         [](C& c, A a) -> Variant {
             const CollectionExAdd options{.Before = optional(a, 2),
                                           .After = optional(a, 3),
                                           .Replace = a.size() > 4 && a[4].ToBoolean()};
             return c.Add(a[0], a[1].ToText(), options), Variant();
         }},
        {u"Item", 1, [](C& c, A a) -> Variant { return c.Item(a[0]); }},
        {u"Remove", 1,
         [](C& c, A a) -> Variant {
             return c.Remove(a[0], a.size() > 1 && a[1].ToBoolean()), Variant();
         }},
        {u"Exists", 1, [](C& c, A a) -> Variant { return c.Exists(a[0]); }},
        {u"Index", 1, [](C& c, A a) -> Variant { return c.Index(a[0].ToText()); }},
        {u"Key", 1, [](C& c, A a) -> Variant { return c.Key(a[0].ToLong()); }},
        {u"Sorted", 0, [](C& c, A) -> Variant { return c.Sorted(); }},
    };
    return InvokeMember<C>(*this, kMembers, member, arguments);
}

Variant CollectionEx::Get(std::u16string_view member, Arguments arguments) {
    return Call(member, arguments);
}

void CollectionEx::Set(std::u16string_view member, const Variant& value, Arguments arguments) {
    if (!EqualTexts(member, u"Sorted", CompareMode::Text)) {
        return Object::Set(member, value, arguments);
    }
    SetSorted(value.ToBoolean());
}

bool CollectionEx::HasKeyLike(RecordNumber number, const Text& key) const noexcept {
    return EqualLowerCase(records_.OfNumber(number).Key, key);
}

// Where a lower-cased key belongs among sorted ones.
std::int32_t CollectionEx::FindSorted(const Text& lowered) const noexcept {
    return records_.PartitionPoint(records_.All(), [&](const Record& record) {
        return CompareTexts(record.Key, lowered, CompareMode::Binary) < 0;
    });
}

// Plans for another capacity and makes room for it.
void CollectionEx::Rehash(std::int32_t capacity) {
    const std::int32_t room = std::min(capacity, std::max(kRoomAtOnce, Count()));
    records_.Reserve(room);
    index_.Reserve(static_cast<std::uint32_t>(room));
    capacity_ = capacity;
}

// Empties the collection first and releases then: a release may run code that looks in here.
void CollectionEx::ReleaseAll() noexcept {
    RecordStore<Record> doomed;
    swap(records_, doomed);
    KeyIndex none;
    swap(index_, none);
    const ItemSnapshot stale = std::exchange(snapshot_, nullptr);
}

void CollectionEx::SortRecords() {
    std::vector<Text> lowered;
    lowered.reserve(static_cast<std::size_t>(Count()));
    for (std::int32_t i = 1; i <= Count(); ++i) lowered.push_back(Key(i));
    const auto order = modZorvane::SortedOrder(
        lowered.size(), [&](std::uint32_t i) { return &lowered[i]; }, modZorvane::CompareString,
        static_cast<std::int32_t>(CompareMode::Binary), false);
    records_.Reorder(order, [&](auto&& newNumberOf) { index_.Renumber(newNumberOf); });
    // A key's lower-cased form has the same hash in the index.
    for (std::int32_t i = 1; i <= Count(); ++i) {
        swap(records_.At(i).Key, lowered[order[static_cast<std::size_t>(i) - 1]]);
    }
}

void swap(CollectionEx& left, CollectionEx& right) noexcept {
    swap(left.records_, right.records_);
    swap(left.index_, right.index_);
    std::swap(left.capacity_, right.capacity_);
    std::swap(left.initialSize_, right.initialSize_);
    std::swap(left.growStep_, right.growStep_);
    std::swap(left.tableRatio_, right.tableRatio_);
    std::swap(left.sorted_, right.sorted_);
    std::swap(left.snapshot_, right.snapshot_);
}

}  // namespace zorvane
