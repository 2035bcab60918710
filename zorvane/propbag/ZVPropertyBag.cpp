#include "zorvane/propbag/ZVPropertyBag.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/propbag/IZVPropertyBag.h"
#include "zorvane/propbag/detail/PropertyObjects.h"
#include "zorvane/propbag/detail/SameValue.h"
#include "zorvane/runtime/ErrorTable.h"
#include "zorvane/runtime/KeyedRecords.h"

namespace zorvane {
namespace {

constexpr std::int32_t kGreatestGranularity = 32768;

std::int32_t ClampGranularity(std::int32_t value) {
    return std::clamp(value, BagState::kLeastGranularity, kGreatestGranularity);
}

[[noreturn]] void RaiseError(Failure failure, std::u16string_view member, std::u16string_view label,
                             const Variant& argument) {
    RaiseFailure(failure, ZVPropertyBag::ClassName(), member, label, argument);
}

}  // namespace

ZVPropertyBag::ZVPropertyBag(ZVPropertyBag&& other) noexcept : ZVPropertyBag() {
    swap(*this, other);
}

ZVPropertyBag& ZVPropertyBag::operator=(ZVPropertyBag&& other) noexcept {
    ZVPropertyBag taken(std::move(other));
    swap(*this, taken);
    return *this;
}

// While the bag still stands: a release may run code that uses it, and even add to it.
ZVPropertyBag::~ZVPropertyBag() {
    while (Count() != 0) Clear();
}

Variant ZVPropertyBag::Add(Variant Item, Text Key, const AddOptions& Options) {
    const auto fail = [&](Failure failure, std::u16string_view member, std::u16string_view label,
                          const Variant& argument) -> Variant {
        if (Options.ReturnItem) RaiseError(failure, member, label, argument);
        return QuietCode(failure);
    };
    std::int32_t position = Options.Position;
    if (Sorted()) {
        const Found found = FindName(Key);
        if (found.Is && state_.UniqueNames) {
            // Kept: the source names Key, not Add.
            return fail(Failure::KeyPresent, u"::Key", kKeyLabel, Key);
        }
        position = found.Position;
    } else if (Options.NamesPlace()) {
        const Place place = PlaceBeforeOrAfter(
            Options, Count(), [](const Text&) { return std::optional<std::int32_t>(); });
        // A neighbour that is not there fails as looking it up would; an unsorted bag finds no
        // name.
        const Variant& neighbour = Options.Before ? *Options.Before : *Options.After;
        if (place.Wrong) return fail(Failure::NoItem, u"::Item", kKeyIndexLabel, neighbour);
        position = place.Position;
    }
    return Insert(position, {std::move(Item), std::move(Key), {}});
}

Text ZVPropertyBag::ClassName() {
    return ClassIdentifier(u"ZVPropertyBag");
}

void ZVPropertyBag::Clear() noexcept {
    BagState doomed;  // dies last: releasing an object may run code that uses this bag
    std::swap(state_, doomed);
    changed_ = false;
}

Array ZVPropertyBag::Contents() const {
    return EncodeBag(state_);
}

void ZVPropertyBag::SetContents(const Variant& value) {
    Become(DecodeContents(value).State);
}

// What was in it is released when it is whole again.
void ZVPropertyBag::Become(BagState state) noexcept {
    std::swap(state_, state);
    changed_ = false;
}

void ZVPropertyBag::CopyFrom(const ZVPropertyBag& Source, bool MarkChanged) {
    if (&Source == this) return Clear(), SetChanged(MarkChanged);
    BagState state = Source.state_;
    const bool changed = Source.changed_ || MarkChanged;
    std::swap(state_, state);
    changed_ = changed;
}

void ZVPropertyBag::CopyItemValue(const Variant& KeyIndex, Variant& Destination) const {
    const BagEntry* entry = Entry(KeyIndex);
    Destination = entry ? entry->Value : Variant();
}

void ZVPropertyBag::SetGranularity(std::int32_t value) noexcept {
    state_.Granularity = ClampGranularity(value);
}

Variant ZVPropertyBag::Item(const Variant& KeyIndex) const {
    return Entry(KeyIndex, u"::Item").Value;
}

bool ZVPropertyBag::ItemFn(const Variant& KeyIndex, Variant& Value) const {
    const BagEntry* entry = Entry(KeyIndex);
    if (entry) Value = Variant(entry->Value);
    return entry != nullptr;
}

Text ZVPropertyBag::Key(std::int32_t Index) const {
    if (const BagEntry* entry = Entry(Index)) return entry->Name;
    RaiseError(Failure::NoItem, u"::Key", kIndexLabel, Index);
}

Enumerator ZVPropertyBag::NewEnum() const {
    return Enumerator(std::make_shared<const std::vector<Variant>>(begin(), end()));
}

Text ZVPropertyBag::ObjName(const Variant& KeyIndex) const {
    return Entry(KeyIndex, u"::ObjName").ObjName;
}

bool ZVPropertyBag::PropIsObject(const Variant& KeyIndex) const noexcept {
    const BagEntry* entry = Entry(KeyIndex);
    return entry && !entry->ObjName.Empty();
}

Variant ZVPropertyBag::ReadProperty(const Text& Name, const PropertyOptions& Options) const {
    Variant byDefault = Options.Default ? *Options.Default : Variant();
    // Here an Index behind the last entry is no Index at all: the name is looked up instead.
    const bool byIndex = Options.Index >= 1 && Options.Index <= Count();
    if (!byIndex && !Sorted()) return byDefault;
    const Found found = byIndex ? Found{true, Options.Index} : FindName(Name);
    const bool inPlace = RestoresInPlace(byDefault);
    if (!found.Is) {
        if (inPlace) AsPersistable(byDefault.TheObject()).InitProperties();
        return byDefault;
    }
    // A copy: what an object does while it reads itself may change this bag.
    const BagEntry entry = state_.Entries[static_cast<std::size_t>(found.Position - 1)];
    if (inPlace) {
        // Kept: this stands before the no-object mark, so a default object survives the mark.
        RestoreObject(byDefault.TheObject(), entry.Value);
        return byDefault;
    }
    if (entry.ObjName == Text(kNoObjectMark)) return Ref<Object>();
    if (entry.ObjName.Empty()) return entry.Value;
    return MakeStoredObject({entry.Value, entry.ObjName}, entry.Name).value_or(byDefault);
}

void ZVPropertyBag::Remove(const Variant& KeyIndex) {
    const std::int32_t position = PositionOf(KeyIndex);
    if (position == 0) RaiseError(Failure::NoItem, u"::Remove", kKeyLabel, KeyIndex);
    RemoveAt(position);
}

void ZVPropertyBag::WriteProperty(Text Name, Variant Value, const PropertyOptions& Options) {
    const bool byName = Options.Index < 1;
    // Kept: a bag that was written by position is not written by name again.
    if (byName && !Sorted()) return;
    BagEntry entry{std::move(Value), std::move(Name), {}};
    const bool object = entry.Value.IsObject();
    if (object) {
        StoredObject stored = StoreObject(entry.Value.AsObject());
        entry.Value = std::move(stored.Words);
        entry.ObjName = std::move(stored.ObjName);
        // The object has run code of its own, which may have used this bag.
        if (byName && !Sorted()) return;
    }
    const Found place = Locate(entry.Name, Options.Index);
    const bool plain = !object && !entry.Value.IsArray();
    const bool left = plain && Options.Default && SameValue(entry.Value, *Options.Default);
    if (!left && !place.Is) MakeRoom();
    // From here on nothing fails.
    if (!byName) state_.Sorted = state_.UniqueNames = false;
    if (!left) {
        Store(place, std::move(entry));
    } else if (place.Is) {
        RemoveAt(place.Position);
    }
}

const BagEntry* ZVPropertyBag::Entry(const Variant& KeyIndex) const noexcept {
    const std::int32_t position = PositionOf(KeyIndex);
    return position == 0 ? nullptr : &state_.Entries[static_cast<std::size_t>(position - 1)];
}

const BagEntry& ZVPropertyBag::Entry(const Variant& KeyIndex, std::u16string_view member) const {
    if (const BagEntry* entry = Entry(KeyIndex)) return *entry;
    RaiseError(Failure::NoItem, member, kKeyIndexLabel, KeyIndex);
}

ZVPropertyBag::Found ZVPropertyBag::FindName(const Text& name) const noexcept {
    if (!Sorted()) return {};
    const auto order = [&](std::int32_t position) {
        const BagEntry& entry = state_.Entries[static_cast<std::size_t>(position - 1)];
        return CompareTexts(name, entry.Name, CompareMode::Text);
    };
    std::int32_t low = 1;
    std::int32_t high = Count();
    while (low <= high) {
        std::int32_t middle = MiddleHalfEven(low, high);
        const int side = order(middle);
        if (side == 0) {
            while (!state_.UniqueNames && middle > 1 && order(middle - 1) == 0) --middle;
            return {true, middle};
        }
        if (side < 0) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return {false, low};
}

std::int32_t ZVPropertyBag::Insert(std::int32_t position, BagEntry entry) {
    MakeRoom();
    if (position < 1 || position > Count() + 1) position = Count() + 1;
    state_.Entries.insert(state_.Entries.begin() + (position - 1), std::move(entry));
    changed_ = true;
    return position;
}

ZVPropertyBag::Found ZVPropertyBag::Locate(const Text& name, std::int32_t index) const noexcept {
    return index < 1 ? FindName(name) : Found{index <= Count(), index};
}

// For one entry more.
void ZVPropertyBag::MakeRoom() {
    std::vector<BagEntry>& entries = state_.Entries;
    if (entries.size() != entries.capacity()) return;
    if (Count() == INT32_MAX) throw std::length_error("ZVPropertyBag: too many entries");
    const auto step = static_cast<std::size_t>(ClampGranularity(Granularity()));
    entries.reserve(entries.size() + std::max(step, entries.size() / 2));
}

std::int32_t ZVPropertyBag::PositionOf(const Variant& KeyIndex) const noexcept {
    const KeyOrPosition named = Classify(KeyIndex);
    if (named.Is == KeyOrPosition::Kind::Key) {
        const Found found = FindName(*named.Key);
        return found.Is ? found.Position : 0;
    }
    return named.Position >= 1 && named.Position <= Count() ? named.Position : 0;
}

void ZVPropertyBag::RemoveAt(std::int32_t position) {
    const auto at = state_.Entries.begin() + (position - 1);
    const BagEntry doomed = std::move(*at);  // dies last, when the gap is closed
    state_.Entries.erase(at);
    changed_ = true;
}

void ZVPropertyBag::Store(const Found& place, BagEntry entry) {
    if (!place.Is) {
        Insert(place.Position, std::move(entry));
        return;
    }
    // The old value dies with the argument, after the entry holds the new one.
    BagEntry& stored = state_.Entries[static_cast<std::size_t>(place.Position - 1)];
    swap(stored.Value, entry.Value);
    swap(stored.ObjName, entry.ObjName);
    changed_ = true;
}

void swap(ZVPropertyBag& left, ZVPropertyBag& right) noexcept {
    std::swap(left.state_, right.state_);
    std::swap(left.changed_, right.changed_);
}

}  // namespace zorvane
