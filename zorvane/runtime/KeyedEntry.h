#pragma once
/// \file
/// The entries of the keyed classes with all of their columns: as a pass shows them, as one look-up
/// finds them, and as several are added at once.

#include <cstdint>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Error.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

/// One entry where it lies, until the container changes. `auto [key, item, itemLong, itemString]`
/// takes it apart.
struct KeyedEntry {
    const Text& Key;
    const Variant& Item;
    std::int32_t ItemLong;
    const Text& ItemString;
};

/// One entry to be added: `{"Ada", "programs", 1815}`.
struct NewEntry {
    Text Key;
    Variant Item = {};
    std::int32_t ItemLong = 0;
    Text ItemString = {};
};

/// The entry that a look-up found, or none: reads and assigns its values with no look-up more. It
/// ends with the next change of the container, a look-up that re-sorts included; assignments of
/// values are none. Without an entry, all but the question whether there is one raises 91.
template <class Record>
class FoundEntry {
  public:
    FoundEntry() = default;
    explicit FoundEntry(Record* record) noexcept : record_(record) {}

    [[nodiscard]] explicit operator bool() const noexcept { return record_ != nullptr; }
    [[nodiscard]] const Text& Key() const { return The().Key; }
    [[nodiscard]] const Variant& Item() const { return The().Item; }
    [[nodiscard]] std::int32_t ItemLong() const { return The().ItemLong; }
    [[nodiscard]] const Text& ItemString() const { return The().ItemString; }

    /// @{
    /// As SetItem, SetItemLong and SetItemString of the container: no sort follows. Not of a const
    /// one.
    void SetItem(Variant value) const requires(!std::is_const_v<Record>) {
        // The old value dies with the argument, after the entry holds the new one.
        swap(The().Item, value);
    }
    void SetItemLong(std::int32_t value) const requires(!std::is_const_v<Record>) {
        The().ItemLong = value;
    }
    void SetItemLong(OtherInteger auto value) const requires(!std::is_const_v<Record>) {
        SetItemLong(Variant(value).LongUnchecked());  // raises 6 when it does not fit
    }
    void SetItemString(Text value) const requires(!std::is_const_v<Record>) {
        swap(The().ItemString, value);
    }
    /// @}

  private:
    [[nodiscard]] Record& The() const {
        if (!record_) RaisePlatform(PlatformError::ObjectNotSet);
        return *record_;
    }

    Record* record_ = nullptr;
};

/// \cond
// What RecordIterator shows in a pass over entries.
struct EntryOfRecord {
    template <class Record>
    static KeyedEntry Of(const Record& record) noexcept {
        return {record.Key, record.Item, record.ItemLong, record.ItemString};
    }
};
/// \endcond

}  // namespace zorvane
