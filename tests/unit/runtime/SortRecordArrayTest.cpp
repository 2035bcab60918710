#include "runtime/SortRecordArray.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>

#include "platform/Relocate.h"
#include "runtime/WideGapSort.h"
#include "tests/support/LiteralSort.h"
#include "tests/unit/Raises.h"

namespace zorvane::modZorvane {
namespace {

using namespace std::string_literals;

struct Numbered {
    std::int32_t value;
    std::int32_t serial;
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
// ranked (Long) and where they are compared (Integer), and chains that meet in one vector.
TEST(SortRecordArray, TiesFallAsInTheLiteralStepsAtEveryGap) {
    std::mt19937 random(5);
    for (const std::size_t n : {0u, 1u, 2u, 3u, 4u, 5u, 12u, 13u, 14u, 40u, 41u, 400u, 3000u}) {
        for (unsigned shape = 0; shape < 16; ++shape) {
            const std::int32_t values = std::array{1, 3, 50, 30000}[shape / 4];
            const bool descending = (shape & 1) != 0;
            std::vector<Numbered> ours;
            for (std::size_t i = 0; i < n; ++i) {
                const auto value = static_cast<std::int32_t>(random() % 30000) % values;
                ours.push_back({value - values / 2, static_cast<std::int32_t>(i)});
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
            std::vector<Ranked> wide = plain;
            PlainGapSort(plain, descending);
            WideGapSort(wide, descending);
            ASSERT_EQ(wide, plain) << n << " ranks, shape " << shape;
            SortNumbered(ours, descending, (shape & 2) != 0 ? CompareLong : CompareInteger);
            ASSERT_EQ(ours, literal) << n << " records, shape " << shape;
        }
    }
}

// Catches a rank that joins or parts what the comparer does not: keys that differ behind a long
// common lead, one that is the beginning of another, units above U+7FFF, case under either mode.
TEST(SortRecordArray, TextsAndTaggedValuesFallAsInTheLiteralSteps) {
    std::mt19937 random(7);
    const std::u16string odd[] = {u"",       u"lead",   u"leader",    u"Lead",
                                  u"lead1",  u"lead10", u"\xD800",    u"\xFFFF",
                                  u"\u00C4", u"\u00E4", u"lead\0\0"s, u"\0"s};
    for (unsigned shape = 0; shape < 32; ++shape) {
        const std::size_t n = std::array{2u, 7u, 40u, 300u}[shape / 8];
        const CompareParameters parameters{static_cast<std::int32_t>(shape & 1), 0};
        const bool descending = (shape & 2) != 0;
        const std::u16string lead = (shape & 4) != 0 ? u"common lead " : u"";
        std::vector<Text> texts;
        for (std::size_t i = 0; i < n; ++i) {
            texts.push_back(Text(lead + odd[random() % std::size(odd)]) +
                            (random() % 3 == 0 ? Text(std::to_string(random() % 20)) : Text()));
        }
        std::vector<const Text*> literal;
        for (const Text& text : texts) literal.push_back(&text);
        LiteralSort(literal, descending, [&](const Text* a, const Text* b) {
            return CompareString(a, b, &parameters, 0);
        });
        const std::vector<Variant> variants(texts.begin(), texts.end());
        const auto ofTexts = SortedOrder(
            n, [&](std::uint32_t i) { return &texts[i]; }, CompareString, parameters.Mode,
            descending);
        const auto ofVariants = SortedOrder(
            n, [&](std::uint32_t i) { return &variants[i]; }, CompareVariant, parameters.Mode,
            descending);
        for (std::size_t i = 0; i < n; ++i) {
            ASSERT_EQ(&texts[ofTexts[i]], literal[i]) << n << " texts, shape " << shape;
            ASSERT_EQ(ofTexts[i], ofVariants[i]) << n << " texts, shape " << shape;
        }
    }
}

TEST(SortRecordArray, AComparerThatRaisesMovesNothing) {
    std::vector<Variant> items;
    for (int i = 20; i > 0; --i) items.emplace_back(i);
    items[7] = Variant::Null();
    const std::vector<Variant> before = items;
    EXPECT_EQ(NumberRaisedBy([&] {
                  SortRecordArray(items.data(), 20, sizeof(Variant), CompareVariant, 0, 0, false);
              }),
              13);
    EXPECT_EQ(items, before);
    // Where there is but one, nobody asks for its text.
    const auto one = SortedOrder(
        1, [&](std::uint32_t) { return &items[7]; }, CompareVariant, 0, false);
    EXPECT_EQ(one.size(), 1u);
}

}  // namespace
}  // namespace zorvane::modZorvane
