#pragma once
// TestData: the keys and values that every run of the timing comparison works on.

#include <cstdint>
#include <optional>
#include <vector>

#include "zorvane/platform/Random.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

struct TestData {
    static constexpr std::int32_t kItems = 10000;

    std::vector<std::int32_t> Values;  // 0 to 1,000,000
    std::vector<Text> Keys;            // 8 to 38 units with codes 32 to 160; two may be equal
};

// Draws kItems values and keys: one number for the value, one for the length, one per unit.
[[nodiscard]] TestData BuildTestData(Random& random);

// How many items a person asks for: 50 to 10,000.
struct ItemCount {
    std::int32_t Items;
    std::optional<Text> Corrected;  // what the entry box is to show instead
    bool Number;                    // it began with one
};

// Halves go to the even number; a text that begins with no number counts as 0.
// Kept: the least number is 50, although the window announces 2,000.
[[nodiscard]] ItemCount ReadItemCount(const Text& typed);

}  // namespace zorvane
