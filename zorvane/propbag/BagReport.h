#pragma once
// BagReport: what is in the words of a bag, for a person to read, nested bags opened.
//
// The entries are those that a reader of the format gets. An array of 16-bit integers that begins
// with a bag's marker is taken for a nested bag. A report shares nothing with the words.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

// Types of what is no value.
inline constexpr std::u16string_view kBagType = u"bag";
inline constexpr std::u16string_view kNoObjectType = u"no object";

struct BagReport {
    struct Entry {
        Text Name;
        Text Class;                  // of an object
        Text Type;                   // kBagType, kNoObjectType, or as "String", "Long array"
        Variant Value;               // of neither a bag nor no object
        std::vector<BagReport> Bag;  // one for a bag that is nested at most 500 levels deep
    };
    // In which of the nested bags, by the names that lead to it with " > " between them, and at
    // which word of the whole.
    struct Finding {
        Text Path;
        std::size_t Word = 0;
        const char* What = "";
    };

    std::size_t Words = 0;
    std::size_t WordsRead = 0;  // 0: none or all; an older tail may follow
    std::int32_t Granularity = 0;
    bool Sorted = true;
    bool UniqueNames = true;
    std::vector<Entry> Entries;
    std::vector<Finding> Damage;  // the outermost bag's alone says that of all
};

// Never raises for what is in the words; std::bad_alloc passes, and std::length_error where the
// names that lead to an entry have 2^30 units and more between them. O(size) for each level of
// nesting.
[[nodiscard]] BagReport ReportBag(std::span<const std::int16_t> words);

}  // namespace zorvane
