#include "zorvane/collection/ZVCollectionEx.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

#include "zorvane/collection/detail/SlotTable.h"
#include "zorvane/platform/Clock.h"
#include "zorvane/platform/Random.h"
#include "zorvane/runtime/FetchAhead.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLeastGranularity = 128;
constexpr std::int32_t kGreatestGranularity = 32768;
constexpr std::size_t kHashedUnits = 128;

// A small step forward for every unit, so the hash sees case although equality does not.
// Kept: the first unit is added in 16 bits that wrap, so some keys of one unit have a negative
// hash.
std::int32_t HashOf(std::u16string_view key) noexcept {
    if (key.empty()) return 17;
    const std::u16string_view hashed = key.substr(0, kHashedUnits);
    auto hash = static_cast<std::int32_t>(static_cast<std::int16_t>(hashed.front() + 17));
    for (const char16_t unit : hashed.substr(1)) {
        hash =
            static_cast<std::int32_t>((static_cast<std::uint32_t>(hash) * 2 + unit) & 0x3FFFFFFF);
    }
    return hash;
}

// CopyFrom takes a step as it comes; the store grows by a sane one all the same.
std::int32_t UsableStep(std::int32_t step) noexcept {
    return std::clamp(step, 1, kGreatestGranularity);
}

std::int32_t Grown(std::int32_t count, std::int32_t step) noexcept {
    const std::int64_t capacity = std::int64_t{count} + UsableStep(step);
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(capacity, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

ZVCollectionEx::ZVCollectionEx() {
    Clear();
}

ZVCollectionEx::ZVCollectionEx(ZVCollectionEx&& other) noexcept : ZVCollectionEx() {
    swap(*this, other);
}

ZVCollectionEx& ZVCollectionEx::operator=(ZVCollectionEx&& other) noexcept {
    ZVCollectionEx taken(std::move(other));
    swap(*this, taken);
    return *this;
}

// While the collection still stands: a release may run code that uses it, and even add to it.
ZVCollectionEx::~ZVCollectionEx() {
    while (Count() != 0) Clear();
}

Variant ZVCollectionEx::Add(Variant Item, Text Key, const AddOptions& Options) {
    const bool raise = Options.ReturnItem;
    if (Key.Empty()) {
        if (Sorted()) return Fail(Failure::Unknown, Key, raise);
        Key = GeneratedKey();
    }
    // Kept: the store grows even for a key that is then rejected.
    if (Count() == capacity_) Rehash(Grown(capacity_, Granularity()));
    if (Holder(Key)) return Fail(Failure::KeyPresent, Key, raise);

    const std::int32_t asked = Options.Position;
    std::int32_t position = asked < 1 || asked > Count() + 1 ? Count() + 1 : asked;
    if (Sorted()) {
        static_cast<void>(BinaryExists(Key, position));
    } else if (Options.NamesPlace()) {
        const Place place = PlaceBeforeOrAfter(Options, Count(),
                                               [&](const Text& key) -> std::optional<std::int32_t> {
                                                   const RecordNumber* const named = Holder(key);
                                                   if (!named) return std::nullopt;
                                                   return records_.PositionOf(*named);
                                               });
        if (place.Wrong) return Fail(*place.Wrong, Key, raise);
        position = place.Position;
    }
    const bool inOrder = Sorted() && InSearchOrder();

    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.InsertKey(position, Key, inOrder, Rule());
    index_.Insert(IndexHash(Key), number);
    CollectionRecord& record = records_.OfNumber(number);
    MoveToEmpty(record.Key, Key);
    MoveToEmpty(record.Item, Item);
    record.AddedAt = additions_++;
    seats_.Drop();
    NoteKeyOrder(inOrder);
    settings_.Changed = true;
    if (raise) return record.Item;
    return position;
}

void ZVCollectionEx::Append(SourceRecord source) {
    CollectionRecord& record = source.Record;
    const bool foreign = source.HashCode != 0 && source.HashCode != HashOf(record.Key);
    if (foreign && foreignCodes_.size() == foreignCodes_.capacity()) {
        foreignCodes_.reserve(std::max<std::size_t>(16, foreignCodes_.size() * 2));
    }
    if (!index_.TakesOne()) MakeRoom();
    const RecordNumber number = records_.InsertKey(Count() + 1, record.Key, false, Rule());
    NoteForeignCode(number, foreign ? source.HashCode : 0);
    record.AddedAt = additions_++;
    records_.OfNumber(number) = std::move(record);
    index_.Insert(IndexHashOf(number), number);
    capacity_ = std::max(capacity_, Count());
    seats_.Drop();
    NoteKeyOrder(false);
}

bool ZVCollectionEx::BinaryExists(Text Key, std::int32_t& Index) {
    RestoreKeyOrder();
    const Search found = records_.FindKey(Key, false, Rule());
    Index = found.Position;
    return found.Found;
}

void ZVCollectionEx::Clear() {
    // Released at the end, when the collection is whole again: the items' end may run code that
    // uses it.
    KeyedStore<CollectionRecord> doomed;
    swap(records_, doomed);
    KeyIndex none;
    swap(index_, none);
    settings_ = {.Granularity = std::max(Granularity(), kLeastGranularity)};
    foreignCodes_.clear();
    Rehash(UsableStep(Granularity()));
    NoteKeyOrder(true);
    SelectKey();
}

std::span<const SortColumn> ZVCollectionEx::Columns() noexcept {
    static constexpr std::array<SortColumn, 6> kColumns{{
        {u"key", offsetof(CollectionRecord, Key), VarType::String},
        {u"itemstring", offsetof(CollectionRecord, ItemString), VarType::String},
        {u"itemlong", offsetof(CollectionRecord, ItemLong), VarType::Long},
        {u"item", offsetof(CollectionRecord, Item), VarType::Variant},
        {u"hashindex", kHashIndexColumn, VarType::Long},
        {u"hashcode", kHashCodeColumn, VarType::Long},
    }};
    return kColumns;
}

Variant ZVCollectionEx::CopyItemValue(std::int32_t Index, std::int32_t Column) const {
    if (Index <= 0) return settings_.At(Column);
    if (Index > Count()) return {};
    const CollectionRecord& record = records_.At(Index);
    switch (Column) {
        case 1:
            return HashCodeOf(records_.NumberAt(Index));
        case 2:
            return Seats()[static_cast<std::size_t>(Index) - 1];
        case 3:
            return record.Item;
        case 4:
            return record.ItemLong;
        case 5:
            return record.ItemString;
        case 6:
            return record.Key;
        default:
            return {};
    }
}

bool ZVCollectionEx::ExistsNamed(const Variant& vKeyIndex, std::int32_t& Index) const {
    const Entry found = LocateEntry(vKeyIndex);
    if (vKeyIndex.IsText()) Index = found.Position != 0 ? found.Position : Count() + 1;
    return found.Position != 0;
}

Variant ZVCollectionEx::Fail(Failure failure, const Text& key, bool raise) const {
    if (raise) RaiseError(failure, kAddMember, kKeyLabel, key);
    return QuietCode(failure);
}

const RecordNumber* ZVCollectionEx::FindStrictly(const Text& key) const noexcept {
    return index_.Find(IndexHash(key), [&](RecordNumber number) { return HasKey(number, key); });
}

Text ZVCollectionEx::GeneratedKey() const {
    Text key;
    do {
        key = Variant(ProgramRandom().Next()).ToText() + Variant(SecondsSinceMidnight()).ToText();
    } while (Holder(key));
    return key;
}

std::int32_t ZVCollectionEx::HashCodeOf(RecordNumber number) const noexcept {
    const auto code = std::ranges::lower_bound(foreignCodes_, number, {}, &ForeignCode::Number);
    const bool noted = code != foreignCodes_.end() && code->Number == number;
    if (noted && code->HashCode != 0) return code->HashCode;
    return HashOf(records_.OfNumber(number).Key);
}

// Same text without regard to case, and same hash code: identical texts have that by themselves.
bool ZVCollectionEx::HasKeyLike(RecordNumber number, const Text& key) const noexcept {
    const Text& own = records_.OfNumber(number).Key;
    return EqualTexts(own, key, CompareMode::Text) && HashCodeOf(number) == HashOf(key);
}

Enumerator ZVCollectionEx::NewEnum() const {
    return Enumerator(std::make_shared<const std::vector<Variant>>(begin(), end()));
}

auto ZVCollectionEx::ReadRecord(Object& source, std::int32_t index) -> SourceRecord {
    SourceRecord read;
    read.HashCode = SourceCell(source, index, 1).ToLong();
    read.Record.Item = SourceCell(source, index, 3);
    read.Record.ItemLong = SourceCell(source, index, 4).ToLong();
    read.Record.ItemString = SourceCell(source, index, 5).ToText();
    read.Record.Key = SourceCell(source, index, 6).ToText();
    return read;
}

// For one entry more.
void ZVCollectionEx::MakeRoom() {
    index_.Reserve(static_cast<std::uint32_t>(Count()) + 1);
    if (index_.IsCrowded()) [[unlikely]]
        index_.Tighten([&](RecordNumber number) { return StrictHashOf(number); });
}

// The code that a source gave a record, or 0: the record has its key's own.
void ZVCollectionEx::NoteForeignCode(RecordNumber number, std::int32_t hashCode) noexcept {
    if (foreignCodes_.empty() && hashCode == 0) [[likely]]
        return;
    const auto code = std::ranges::lower_bound(foreignCodes_, number, {}, &ForeignCode::Number);
    if (code != foreignCodes_.end() && code->Number == number) {
        code->HashCode = hashCode;
    } else if (hashCode != 0) {
        foreignCodes_.insert(code, {number, hashCode});
    }
}

// A new capacity, and every live record seated anew in position order.
void ZVCollectionEx::Rehash(std::int32_t capacity) noexcept {
    capacity_ = capacity;
    rehashedAt_ = additions_;
    seats_.Drop();
}

Variant ZVCollectionEx::RemoveNamed(const Variant& vKeyIndex, bool ReturnItem) {
    const Entry entry = LocateEntry(vKeyIndex);
    if (entry.Position == 0) [[unlikely]] {
        if (ReturnItem) RaiseError(Failure::NoItem, u"::Remove", kKeyLabel, vKeyIndex);
        return std::int16_t{0};
    }
    if (!vKeyIndex.IsText()) FetchAhead(records_, index_, entry.Position);
    records_.PrepareClose(entry.Position);
    const std::uint32_t hash = IndexHashOf(entry.Number);
    // Released at the end, when the collection is whole again.
    Taken<CollectionRecord> doomed(records_.OfNumber(entry.Number));
    records_.Close(entry.Position, entry.Number);
    index_.Erase(hash, entry.Number);
    NoteForeignCode(entry.Number, 0);
    seats_.Drop();
    settings_.Changed = true;
    if (ReturnItem) return std::move(doomed->Item);
    return entry.Position;
}

void ZVCollectionEx::RenumberCodes(
    const std::function<RecordNumber(RecordNumber)>& newNumberOf) noexcept {
    // Codes of records that are gone would come upon numbers that others have now.
    std::erase_if(foreignCodes_, [](const ForeignCode& code) { return code.HashCode == 0; });
    for (ForeignCode& code : foreignCodes_) code.Number = newNumberOf(code.Number);
    std::ranges::sort(foreignCodes_, {}, &ForeignCode::Number);
}

// Finds the slot of every record in a table of 2 * Capacity() + 1 slots after all that happened to
// it: first those of the last re-hash in position order, then the later ones in theirs.
std::vector<std::int32_t> ZVCollectionEx::SeatRecords() const {
    const auto count = static_cast<std::size_t>(Count());
    SlotTable table(static_cast<std::uint32_t>(capacity_) * 2 + 1);
    std::vector<std::int32_t> seats(count);
    struct Later {
        std::uint64_t addedAt;
        std::size_t at;
    };
    std::vector<Later> later;
    const auto seat = [&](std::size_t at) {
        const RecordNumber number = records_.NumberAt(static_cast<std::int32_t>(at) + 1);
        seats[at] = static_cast<std::int32_t>(table.Seat(HashCodeOf(number)));
    };
    for (std::size_t at = 0; at < count; ++at) {
        const std::uint64_t addedAt = records_.At(static_cast<std::int32_t>(at) + 1).AddedAt;
        if (addedAt < rehashedAt_) {
            seat(at);
        } else {
            later.push_back({addedAt, at});
        }
    }
    std::ranges::sort(later, {}, &Later::addedAt);
    for (const Later& next : later) seat(next.at);
    return seats;
}

void ZVCollectionEx::SetGranularity(std::int32_t value) {
    const std::int32_t step = std::clamp(value, kLeastGranularity, kGreatestGranularity);
    const std::int32_t capacity = Grown(Count(), step);
    records_.Reserve(capacity);
    index_.Reserve(static_cast<std::uint32_t>(capacity));
    settings_.Granularity = step;
    Rehash(capacity);
}

bool ZVCollectionEx::Sort() {
    if (sortOffset_ != kHashIndexColumn && sortOffset_ != kHashCodeColumn) {
        return KeyedRecords::Sort();
    }
    std::vector<std::int32_t> column;
    if (sortOffset_ == kHashIndexColumn) {
        column = Seats();
    } else {
        for (std::int32_t i = 1; i <= Count(); ++i) {
            column.push_back(HashCodeOf(records_.NumberAt(i)));
        }
    }
    return SortByFields([&](std::uint32_t i) { return &column[i]; });
}

// As two keys are the same when they are equal folded and have equal hash codes.
std::uint32_t ZVCollectionEx::StrictHash(const Text& key) noexcept {
    return HashExactly(key, Sameness::Folded, static_cast<std::uint32_t>(HashOf(key)));
}

std::uint32_t ZVCollectionEx::StrictHashOf(RecordNumber number) const noexcept {
    return HashExactly(records_.OfNumber(number).Key, Sameness::Folded,
                       static_cast<std::uint32_t>(HashCodeOf(number)));
}

void swap(ZVCollectionEx& left, ZVCollectionEx& right) noexcept {
    left.SwapRecords(right);
    swap(left.index_, right.index_);
    std::swap(left.capacity_, right.capacity_);
    std::swap(left.additions_, right.additions_);
    std::swap(left.rehashedAt_, right.rehashedAt_);
    left.foreignCodes_.swap(right.foreignCodes_);
    swap(left.seats_, right.seats_);
}

}  // namespace zorvane
