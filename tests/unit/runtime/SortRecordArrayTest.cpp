#include "runtime/SortRecordArray.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>

#include "platform/Relocate.h"
#include "tests/support/LiteralSort.h"
#include "tests/unit/Raises.h"

namespace zorvane::modZorvane {
namespace {

struct Numbered {
    std::int32_t value;
    std::int32_t serial;
    friend bool operator==(const Numbered&, const Numbered&) = default;
};

void SortNumbered(std::vector<Numbered>& records, bool descending) {
    SortRecordArray(records.data(), static_cast<std::int32_t>(records.size()), sizeof(Numbered),
                    CompareLong, offsetof(Numbered, value), 0, descending);
}

TEST(SortRecordArray, NoneOrOneIsLeftAlone) {
    SortRecordArray(nullptr, 0, sizeof(Numbered), CompareLong, 0, 0, false);
    std::vector<Numbered> one{{5, 1}};
    SortNumbered(one, true);
    EXPECT_EQ(one[0].value, 5);
}

// Frozen: what equal values do to each other is part of the behaviour.
TEST(SortRecordArray, KeptADescendingSortMovesEqualsPastEachOther) {
    std::vector<Numbered> records;
    for (const std::int32_t value : {2, 1, 2, 1, 2, 1, 2}) {
        records.push_back({value, static_cast<std::int32_t>(records.size())});
    }
    std::vector<Numbered> up = records;
    SortNumbered(up, false);
    const std::vector<Numbered> ascending{{1, 1}, {1, 3}, {1, 5}, {2, 0}, {2, 2}, {2, 4}, {2, 6}};
    EXPECT_EQ(up, ascending);
    SortNumbered(records, true);
    const std::vector<Numbered> descending{{2, 2}, {2, 0}, {2, 6}, {2, 4}, {1, 1}, {1, 3}, {1, 5}};
    EXPECT_EQ(records, descending);
}

// Catches a wrong gap, a wrong first gap, and a tie that is told the wrong way.
TEST(SortRecordArray, TiesFallAsInTheLiteralStepsAtEveryGap) {
    std::mt19937 random(5);
    for (const std::size_t n : {2u, 3u, 4u, 5u, 12u, 13u, 14u, 39u, 40u, 41u, 121u, 400u, 3000u}) {
        for (const unsigned values : {1u, 3u, 50u, 1000000u}) {
            for (const bool descending : {false, true}) {
                std::vector<Numbered> ours;
                for (std::size_t i = 0; i < n; ++i) {
                    ours.push_back({static_cast<std::int32_t>(random() % values),
                                    static_cast<std::int32_t>(i)});
                }
                std::vector<Numbered> literal = ours;
                LiteralSort(literal, descending, [](const Numbered& a, const Numbered& b) {
                    return (a.value > b.value) - (a.value < b.value);
                });
                SortNumbered(ours, descending);
                ASSERT_EQ(ours, literal)
                    << n << " records, " << values << " values, descending " << descending;
            }
        }
    }
}

// Catches a rank that joins or parts what the comparer does not: keys that differ behind a long
// common lead, one that is the beginning of another, units above U+7FFF, case under either mode.
TEST(SortRecordArray, TextsAndTaggedValuesFallAsInTheLiteralSteps) {
    std::mt19937 random(7);
    static const Text kTexts[] = {u"",
                                  u"lead",
                                  u"leader",
                                  u"lead\0",
                                  u"Lead",
                                  u"lead1",
                                  u"lead10",
                                  u"lead9",
                                  u"\xD800",
                                  u"\xFFFF",
                                  u"\u00C4",
                                  u"\u00E4",
                                  Text(std::u16string_view(u"lead\0\0", 6))};
    for (const std::size_t n : {2u, 7u, 40u, 300u}) {
        for (const std::int32_t mode : {0, 1}) {
            for (const bool lead : {false, true}) {
                std::vector<Text> texts;
                for (std::size_t i = 0; i < n; ++i) {
                    texts.push_back(
                        Text(lead ? u"common lead " : u"") + kTexts[random() % std::size(kTexts)] +
                        (random() % 3 == 0 ? Text(std::to_string(random() % 20)) : Text()));
                }
                for (const bool descending : {false, true}) {
                    const CompareParameters parameters{mode, 0};
                    std::vector<const Text*> literal;
                    for (const Text& text : texts) literal.push_back(&text);
                    LiteralSort(literal, descending, [&](const Text* a, const Text* b) {
                        return CompareString(a, b, &parameters, 0);
                    });
                    std::vector<Variant> variants(texts.begin(), texts.end());
                    const auto ofTexts = SortedOrder(
                        n, [&](std::uint32_t i) { return &texts[i]; }, CompareString, mode,
                        descending);
                    const auto ofVariants = SortedOrder(
                        n, [&](std::uint32_t i) { return &variants[i]; }, CompareVariant, mode,
                        descending);
                    for (std::size_t i = 0; i < n; ++i) {
                        ASSERT_EQ(&texts[ofTexts[i]], literal[i])
                            << n << " texts, mode " << mode << ", descending " << descending;
                        ASSERT_EQ(ofTexts[i], ofVariants[i]);
                    }
                }
            }
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
}

}  // namespace
}  // namespace zorvane::modZorvane
