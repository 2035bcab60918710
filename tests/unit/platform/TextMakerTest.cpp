// TextMaker: texts in one slab must not run into one another, and each must live until it goes.
#include "zorvane/platform/TextMaker.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

// Units that no other text of the test has in the same place.
std::u16string UnitsOf(std::size_t serial, std::size_t length) {
    std::u16string units(length, u'\0');
    for (std::size_t i = 0; i < length; ++i) units[i] = static_cast<char16_t>(serial * 131 + i);
    return units;
}

struct Made {
    Text Value;
    std::u16string Units;
};

std::vector<Made> MakeMany(TextMaker& maker) {
    std::vector<Made> all;
    for (std::size_t serial = 0; serial < 700; ++serial) {
        // Each length on both sides of what a slab takes, and often enough to fill several.
        const std::u16string units = UnitsOf(serial, serial % 70);
        const auto fill = [&](char16_t* to) { std::ranges::copy(units, to); };
        all.push_back({maker.Make(units.size(), fill), units});
    }
    return all;
}

void ExpectWhole(const std::vector<Made>& all) {
    for (const Made& made : all) ASSERT_EQ(made.Value.Units(), made.Units);
}

TEST(TextMaker, TextsStayWholeWhoeverGoesFirstAndWhateverComesInTheirPlace) {
    for (const bool fromFront : {true, false}) {
        SCOPED_TRACE(fromFront);
        std::vector<Made> all;
        {
            TextMaker maker;
            all = MakeMany(maker);
            ExpectWhole(all);
        }
        std::vector<Made> later;
        while (!all.empty()) {
            const auto doomed = static_cast<std::ptrdiff_t>(std::min<std::size_t>(all.size(), 50));
            all.erase(fromFront ? all.begin() : all.end() - doomed,
                      fromFront ? all.begin() + doomed : all.end());
            // Whatever was given back too early is written over now.
            TextMaker another;
            later = MakeMany(another);
            ExpectWhole(all);
        }
        ExpectWhole(later);
    }
}

// A copy counts for its text alone: a slab that counted copies would never go, or go too early.
TEST(TextMaker, ACopyOutlivesTheTextAndItsNeighbours) {
    std::vector<Text> copies;
    {
        TextMaker maker;
        for (const Made& made : MakeMany(maker)) copies.push_back(made.Value);
    }
    TextMaker another;
    const std::vector<Made> later = MakeMany(another);
    for (std::size_t serial = 0; serial < copies.size(); ++serial) {
        ASSERT_EQ(copies[serial].Units(), UnitsOf(serial, serial % 70));
        const Text copy = copies[serial];
        copies[serial] = Text();
        ASSERT_EQ(copy.Units(), UnitsOf(serial, serial % 70));
    }
    ExpectWhole(later);
}

TEST(TextMaker, NoUnitsAndTooMany) {
    TextMaker maker;
    EXPECT_TRUE(maker.Make(0, [](char16_t*) { FAIL(); }).Empty());
    EXPECT_THROW(static_cast<void>(maker.Make(0x40000000, [](char16_t*) {})), std::length_error);
}

}  // namespace
}  // namespace zorvane
