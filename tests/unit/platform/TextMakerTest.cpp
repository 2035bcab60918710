// TextMaker: texts in one slab must not run into one another, and each must live until it goes.
#include "tests/support/AllocationFaults.h"
#include "tests/support/Testing.h"
#include "zorvane/platform/TextMaker.h"

namespace zorvane {
namespace {

// Units that no other text of the test has in the same place.
std::u16string SomeUnits(std::size_t serial, std::size_t length) {
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
        const std::u16string units = SomeUnits(serial, serial % 70);
        const auto fill = [&](char16_t* to) { std::ranges::copy(units, to); };
        all.push_back({maker.Make(units.size(), fill), units});
    }
    return all;
}

// Catches texts that run into one another, and a slab that goes while a text of it, or a copy of
// one, still stands: what was given back too early is written over. And one that never goes.
TEST(TextMaker, TextsStayWholeWhoeverGoesFirstAndWhateverComesInTheirPlace) {
    const auto isWhole = [](const Made& made) { return made.Value.Units() == made.Units; };
    const std::int64_t held = AllocationsHeld();
    for (const bool fromFront : {true, false}) {
        std::vector<Made> all;
        {
            TextMaker maker;
            const std::vector<Made> originals = MakeMany(maker);
            all = originals;
        }
        while (!all.empty()) {
            const auto doomed = static_cast<std::ptrdiff_t>(std::min<std::size_t>(all.size(), 50));
            all.erase(fromFront ? all.begin() : all.end() - doomed,
                      fromFront ? all.begin() + doomed : all.end());
            TextMaker another;
            const std::vector<Made> later = MakeMany(another);
            ASSERT_TRUE(std::ranges::all_of(all, isWhole) && std::ranges::all_of(later, isWhole));
        }
    }
    EXPECT_EQ(AllocationsHeld(), held);
}

TEST(TextMaker, NoUnitsAndTooManyAreToldApartByWhoeverMakes) {
    TextMaker maker;
    const auto check = [](auto&& make) {
        EXPECT_TRUE(make(0, [](char16_t*) { FAIL(); }).Empty());
        EXPECT_THROW(static_cast<void>(make(0x40000000, [](char16_t*) {})), std::length_error);
    };
    check([&](std::size_t length, auto fill) { return maker.Make(length, fill); });
    check([](std::size_t length, auto fill) { return Text::Make(length, fill); });
}

}  // namespace
}  // namespace zorvane
