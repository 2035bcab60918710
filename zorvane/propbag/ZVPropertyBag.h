#pragma once
/// \class zorvane::ZVPropertyBag
/// Named values, arrays and objects, and the whole of them as one array of words.
///
/// Between public calls: while Sorted(), entries ascend by name without regard to case, and no two
/// names are equal while names are unique. Both hold for every bag but one whose words said so
/// falsely, or were cut off before they said otherwise; then look-ups by name may miss, and nothing
/// worse. Entries are counted from 1.
///
/// A KeyIndex is a name (a text) or a position (a 16- or 32-bit integer). A bag that is not
/// Sorted() finds nothing by name. Look-up by name O(log n), by position O(1); Add and Remove move
/// the entries behind the place. When memory runs out, std::bad_alloc leaves Add, Remove and
/// assignments as if never called, and every entry as it was.
///
/// Threads: different ones may be used at once, and const members of one at once.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/Enumerator.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/propbag/BagStream.h"
#include "zorvane/runtime/AddOptions.h"

namespace zorvane {

struct BagLoading;

struct PropertyOptions {
    std::optional<Variant> Default = {};  ///< omitted is not the same as Empty
    std::int32_t Index = 0;               ///< a position from 1 instead of the name; 0 = by name
};

class ZORVANE_EXPORT ZVPropertyBag : public Object {
  public:
    class Iterator;

    ZVPropertyBag() = default;
    ZVPropertyBag(ZVPropertyBag&& other) noexcept;
    ZVPropertyBag& operator=(ZVPropertyBag&& other) noexcept;
    ZVPropertyBag(const ZVPropertyBag&) = delete;  ///< CopyFrom copies
    ZVPropertyBag& operator=(const ZVPropertyBag&) = delete;
    ~ZVPropertyBag() override;

    /// Adds an entry and gives its position (Long). While Sorted() the place follows from the name
    /// and the other places are ignored; otherwise the entry goes where Before or After say, or to
    /// Position, or to the end. Fails when the name is in use (28501) and when Before or After name
    /// no entry (28500): raised with ReturnItem, else returned as the Integer -28501 or -28500.
    /// Kept: with ReturnItem the result is the position all the same.
    Variant Add(Variant Item, Text Key = {}, const AddOptions& Options = {});

    /// @{
    /// True since an entry was added, replaced or removed; Clear and Contents reset it.
    [[nodiscard]] bool Changed() const noexcept { return changed_; }
    void SetChanged(bool value) noexcept { changed_ = value; }
    /// @}

    /// The class identifier, and the first half of every error source.
    [[nodiscard]] static Text ClassName();

    /// No entries, sorted, unique names, Granularity 16, not Changed.
    void Clear() noexcept;

    /// The whole bag but Changed as words, bounds from 0, in one block of just that size. Null and
    /// decimal values have no form there and come back as Empty. An array of Error, Decimal or
    /// Object that has elements can be written and not read: it comes back as Empty, its elements
    /// are taken for the values behind it, and those for the settings. Entries keep their names and
    /// have wrong values, mostly Empty, or none are left from there on; Sorted() may be False
    /// (FORMAT.md).
    /// Raises 5 for a value whose arrays are nested deeper than the 256 levels that are read again,
    /// and 6 for more than 2^31 - 1 words, or 2^26 that several arrays have in common. O(size).
    [[nodiscard]] Array Contents() const;
    /// Clears the bag and rebuilds it. Whatever is no stream leaves it empty; of a damaged stream
    /// the entries before the damage stay, and settings that were not reached are 16, True and
    /// True. Raises nothing for what the value is.
    void SetContents(const Variant& value);

    /// Clears this bag and takes entries and settings of the other; Changed too, unless MarkChanged
    /// sets it. Objects are shared. Copying from itself leaves nothing.
    void CopyFrom(const ZVPropertyBag& Source, bool MarkChanged = false);

    /// Destination receives the entry's value, or Empty when there is no such entry.
    void CopyItemValue(const Variant& KeyIndex, Variant& Destination) const;

    [[nodiscard]] std::int32_t Count() const noexcept {
        return static_cast<std::int32_t>(state_.Entries.size());
    }

    /// @{
    /// The step by which room for entries grows at least: clamped to 16..32768 when assigned or
    /// used, as it stands when it came with Contents.
    [[nodiscard]] std::int32_t Granularity() const noexcept { return state_.Granularity; }
    void SetGranularity(std::int32_t value) noexcept;
    /// @}

    /// The value as it is stored: of an object the words of its own bag. Raises 28500.
    [[nodiscard]] Variant Item(const Variant& KeyIndex) const;
    /// @{
    /// The same as a function, and as a quiet one: false and Value untouched when there is no
    /// entry.
    [[nodiscard]] Variant ItemFn(const Variant& KeyIndex) const { return Item(KeyIndex); }
    [[nodiscard]] bool ItemFn(const Variant& KeyIndex, Variant& Value) const;
    /// @}

    /// The name at a position. Raises 28500 outside 1..Count().
    [[nodiscard]] Text Key(std::int32_t Index) const;

    /// The values in entry order, as they stand now.
    [[nodiscard]] Enumerator NewEnum() const;

    /// "" for a plain value, "Font", the class identifier of a stored object, or a carriage return
    /// for a property that was set to no object. Raises 28500.
    [[nodiscard]] Text ObjName(const Variant& KeyIndex) const;

    /// Whether the entry exists and its ObjName is not "". Never raises.
    [[nodiscard]] bool PropIsObject(const Variant& KeyIndex) const noexcept;

    /// The value under a name; without one, Default (or Empty). An object given as Default is
    /// itself restored by its ReadProperties, or given InitProperties when nothing is stored, and
    /// returned; a font is made anew, and so is, by CreatableClasses(), any other object that was
    /// stored with a class name. Raises 13 for an object without IZVPropertyBag, 429 for a class
    /// that cannot be made (TolerantReading.h skips it), 5 for objects nested too deep (as
    /// when writing), and what ReadProperties raises.
    [[nodiscard]] Variant ReadProperty(const Text& Name, const PropertyOptions& Options = {}) const;

    /// Removes the entry. Raises 28500.
    void Remove(const Variant& KeyIndex);

    /// Assigned by writing with an Index (False, for good), by Clear, Contents and CopyFrom.
    [[nodiscard]] bool Sorted() const noexcept { return state_.Sorted; }

    [[nodiscard]] Text TypeName() const override { return u"ZVPropertyBag"; }

    /// Stores a value, replacing the one under the name. A value that is neither object nor array
    /// and equals Default (SameValue) is not stored, and an older one is removed. An object is
    /// stored as what its WriteProperties writes, a font as its eight properties, no object as a
    /// mark. An Index overwrites that entry and keeps its name, or appends when there are fewer.
    /// Kept: writing with an Index ends Sorted() and unique names, and by name nothing is written
    /// or read any more. Raises 13 for an object without IZVPropertyBag, 5 for one that is already
    /// being written (objects that contain one another) or nested deeper than 500 levels (fewer on
    /// a small stack), 6 where objects that many others hold would take more than 2^26 words, and
    /// what WriteProperties raises; then the bag is what it was, but for what the object's own code
    /// did to it. docs/behaviour.md has all limits in one table.
    void WriteProperty(Text Name, Variant Value, const PropertyOptions& Options = {});

    /// Late-bound: every member; CopyItemValue and ItemFn give the value back, NewEnum is missing.
    Variant Call(std::u16string_view member, Arguments arguments = {}) override;
    Variant Get(std::u16string_view member, Arguments arguments = {}) override;
    void Set(std::u16string_view member, const Variant& value, Arguments arguments = {}) override;

    /// The values in entry order; any change of the bag ends the pass.
    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] Iterator end() const noexcept;

    friend ZORVANE_EXPORT void swap(ZVPropertyBag& left, ZVPropertyBag& right) noexcept;
    friend ZORVANE_EXPORT BagLoading LoadBagFile(const std::filesystem::path& path,
                                                 ZVPropertyBag& bag, std::int32_t atFirst);

  private:
    struct Found {
        bool Is = false;
        std::int32_t Position = -1;  // of the entry, or where it belongs
    };

    void Become(BagState state) noexcept;
    [[nodiscard]] const BagEntry* Entry(const Variant& KeyIndex) const noexcept;
    [[nodiscard]] const BagEntry& Entry(const Variant& KeyIndex, std::u16string_view member) const;
    [[nodiscard]] Found FindName(const Text& name) const noexcept;
    std::int32_t Insert(std::int32_t position, BagEntry entry);
    [[nodiscard]] Found Locate(const Text& name, std::int32_t index) const noexcept;
    void MakeRoom();
    [[nodiscard]] std::int32_t PositionOf(const Variant& KeyIndex) const noexcept;
    void RemoveAt(std::int32_t position);
    void Store(const Found& place, BagEntry entry);

    BagState state_;
    bool changed_ = false;
};

/// Goes through the values; stays valid until the bag changes.
class ZVPropertyBag::Iterator {
  public:
    using difference_type = std::ptrdiff_t;
    using value_type = Variant;

    Iterator() = default;
    explicit Iterator(std::vector<BagEntry>::const_iterator at) noexcept : at_(at) {}
    const Variant& operator*() const noexcept { return at_->Value; }
    const Variant* operator->() const noexcept { return &at_->Value; }
    Iterator& operator++() noexcept {
        ++at_;
        return *this;
    }
    Iterator operator++(int) noexcept { return Iterator(at_++); }
    friend bool operator==(const Iterator&, const Iterator&) = default;

  private:
    std::vector<BagEntry>::const_iterator at_;
};

inline ZVPropertyBag::Iterator ZVPropertyBag::begin() const noexcept {
    return Iterator(state_.Entries.begin());
}
inline ZVPropertyBag::Iterator ZVPropertyBag::end() const noexcept {
    return Iterator(state_.Entries.end());
}

}  // namespace zorvane
