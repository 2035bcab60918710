#include "zorvane/runtime/SortRecordArray.h"

#include "tests/support/LiteralSort.h"
#include "tests/support/Testing.h"
#include "zorvane/runtime/detail/WideGapSort.h"

namespace zorvane::modZorvane {
namespace {

struct Numbered {
    Numbered(std::int32_t sortedBy, std::int32_t number) : serial(number), value(sortedBy) {}
    std::int32_t serial;
    std::int32_t value;  // not at the record's beginning
    friend bool operator==(const Numbered&, const Numbered&) = default;
};

void SortNumbered(std::vector<Numbered>& records, bool descending, Comparer by = CompareLong) {
    SortRecordArray(records.data(), static_cast<std::int32_t>(records.size()), sizeof(Numbered), by,
                    offsetof(Numbered, value), 0, descending);
}

// Frozen: what equal values do to each other is part of the behaviour.
TEST(SortRecordArray, KeptADescendingSortMovesEqualsPastEachOther) {
    std::vector<Numbered> records{{2, 0}, {1, 1}, {2, 2}, {1, 3}, {2, 4}, {1, 5}, {2, 6}};
    std::vector<Numbered> up = records;
    SortNumbered(up, false);
    const std::vector<Numbered> ascending{{1, 1}, {1, 3}, {1, 5}, {2, 0}, {2, 2}, {2, 4}, {2, 6}};
    EXPECT_EQ(up, ascending);
    SortNumbered(records, true);
    const std::vector<Numbered> descending{{2, 2}, {2, 0}, {2, 6}, {2, 4}, {1, 1}, {1, 3}, {1, 5}};
    EXPECT_EQ(records, descending);
}

// Catches a wrong gap, a wrong first gap, and a tie that is told the wrong way, where values are
// ranked (Long) and where they are compared (Integer), chains that meet in one vector, and a pass
// that is finished another way in either direction: equals make descending slow, and ascending is
// where gap 40 finds all in order and gap 13 hardly anything.
TEST(SortRecordArray, TiesFallAsInTheLiteralStepsAtEveryGap) {
    std::mt19937 random(5);
    for (const std::size_t n : {0u, 1u, 2u, 3u, 4u, 5u, 12u, 13u, 14u, 40u, 41u, 400u, 3000u}) {
        for (unsigned shape = 0; shape < 20; ++shape) {
            const std::int32_t values = std::array{1, 3, 50, 30000, 8000}[shape / 4];
            const bool descending = (shape & 1) != 0;
            std::vector<Numbered> ours;
            for (std::size_t i = 0; i < n; ++i) {
                const auto serial = static_cast<std::int32_t>(i);
                const auto value = values == 8000
                                       ? (serial + 80 * (39 - serial % 40)) / 50
                                       : static_cast<std::int32_t>(random() % 30000) % values;
                ours.push_back({value - values / 2, serial});
            }
            std::vector<Numbered> literal = ours;
            LiteralSort(literal, descending, [](const Numbered& a, const Numbered& b) {
                return (a.value > b.value) - (a.value < b.value);
            });
            std::vector<Ranked> plain;
            for (const Numbered& one : ours) {
                plain.push_back(Ranked{static_cast<std::uint32_t>(one.value) ^ 0x80000000u} << 32 |
                                static_cast<std::uint32_t>(one.serial));
            }
            std::vector<Ranked> wide = plain, narrow = plain;
            PlainGapSort(narrow, descending);
            WideGapSort(wide, descending);
            LiteralSort(plain, descending, [](Ranked a, Ranked b) {
                return (a >> 32 > b >> 32) - (a >> 32 < b >> 32);
            });
            ASSERT_TRUE(wide == plain && narrow == plain) << n << " ranks, shape " << shape;
            SortNumbered(ours, descending, (shape & 2) != 0 ? CompareLong : CompareInteger);
            ASSERT_EQ(ours, literal) << n << " records, shape " << shape;
        }
    }
}

// Catches a sort that asks for a text that nobody compares.
TEST(SortRecordArray, ASingleValueNeedsNoText) {
    const Variant none = Variant::Null();
    const auto field = [&](std::uint32_t) { return &none; };
    EXPECT_EQ(SortedOrder(1, field, CompareVariant, 0, false).size(), 1u);
}

}  // namespace
}  // namespace zorvane::modZorvane
