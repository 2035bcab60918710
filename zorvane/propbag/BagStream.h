#pragma once
// BagStream: a whole bag as one array of words, and back (FORMAT.md says it for other languages).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "zorvane/platform/Array.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/propbag/detail/StreamDecoder.h"

namespace zorvane {

struct BagEntry {
    Variant Value;  // of a stored object: the words of its own bag
    Text Name;
    Text ObjName;  // empty for a plain value
};

// The ObjName of a property that was set to no object, and of a font.
inline constexpr std::u16string_view kNoObjectMark = u"\r";
inline constexpr std::u16string_view kFontMark = u"Font";

// All that a stream holds of a bag.
struct BagState {
    static constexpr std::int32_t kLeastGranularity = 16;

    std::vector<BagEntry> Entries;
    std::int32_t Granularity = kLeastGranularity;
    bool Sorted = true;       // entries ascend by name
    bool UniqueNames = true;  // no two names are equal
};

// One block of exactly the words needed, bounds from 0. Raises 5 for arrays nested deeper than 256
// and 6 for more words than an array can count, 2^31 - 1. O(size).
[[nodiscard]] Array EncodeBag(const BagState& state);

struct BagReading {
    BagState State;                         // whole entries before the damage
    std::optional<StreamDamage> Damage;     // nothing when the stream was read to its last flag
    std::vector<std::uint32_t> ValueWords;  // where each entry's value begins
    std::size_t Words = 0;                  // where the bag ends; an older tail may follow
};

// Never raises for what is in the words; std::bad_alloc passes. Words behind the last flag are not
// looked at: a file keeps an older, longer stream's tail.
[[nodiscard]] BagReading DecodeBag(std::span<const std::int16_t> words,
                                   StreamCare care = StreamCare::Reader);
// Of an array of words; whatever else the value is holds an empty bag, undamaged.
[[nodiscard]] BagReading DecodeContents(const Variant& value);

}  // namespace zorvane
