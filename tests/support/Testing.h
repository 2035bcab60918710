#pragma once
// What a unit test of the library begins with.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <ranges>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/CountedObject.h"
#include "tests/support/Outcome.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

// A code point in UTF-16.
inline std::u16string UnitsOf(char32_t point) {
    if (point <= 0xFFFF) return {static_cast<char16_t>(point)};
    return {static_cast<char16_t>(0xD7C0 + (point >> 10)),
            static_cast<char16_t>(0xDC00 + (point & 0x3FF))};
}

}  // namespace zorvane
