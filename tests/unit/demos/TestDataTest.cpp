#include "demos/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace zorvane {
namespace {

TEST(BuildTestData, DrawsTheSameDataAgainAndOtherDataFromAContinuedSequence) {
    Random random;
    Random again;
    const TestData first = BuildTestData(random);
    EXPECT_EQ(first.Keys, BuildTestData(again).Keys);
    EXPECT_NE(first.Keys, BuildTestData(random).Keys);
}

TEST(BuildTestData, KeepsToTheLengthsCodesAndValuesThatARoundedDrawCanGive) {
    Random random;
    const TestData data = BuildTestData(random);
    ASSERT_EQ(data.Keys.size(), 10000u);
    ASSERT_EQ(data.Values.size(), 10000u);
    std::set<std::int32_t> lengths;
    std::set<char16_t> units;
    for (const Text& key : data.Keys) {
        lengths.insert(key.Length());
        const auto all = key.Units();
        units.insert(all.begin(), all.end());
    }
    EXPECT_EQ(*lengths.begin(), 8);
    EXPECT_EQ(*lengths.rbegin(), 38);
    EXPECT_EQ(units.size(), 129u);  // codes 32 to 160, each another character
    EXPECT_EQ(*units.begin(), u' ');
    EXPECT_TRUE(units.contains(0x20AC));  // code 128 is the euro sign of the code page
    EXPECT_TRUE(units.contains(0x0081));  // code 129 is open in it and stays
    EXPECT_TRUE(units.contains(0x0178));  // code 159, the last of them
    EXPECT_TRUE(units.contains(0x00A0));
    const auto [least, greatest] = std::ranges::minmax(data.Values);
    EXPECT_GE(least, 0);
    EXPECT_LE(greatest, 1000000);
    EXPECT_GT(greatest - least, 990000);
}

// One value, one length and then as many units as the length says, each from its own draw.
TEST(BuildTestData, TakesItsDrawsInTheStatedOrder) {
    Random random;
    const TestData data = BuildTestData(random);
    Random same;
    const auto draw = [&](double factor, double least) {
        return std::nearbyint(static_cast<double>(same.Next()) * factor + least);
    };
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(data.Values[i], draw(1000000, 0));
        ASSERT_EQ(data.Keys[i].Length(), draw(30, 8));
        for (const char16_t unit : data.Keys[i].Units()) {
            const double code = draw(128, 32);
            if (code < 128 || code > 159) {
                EXPECT_EQ(unit, code);
            }
        }
    }
}

TEST(ReadItemCount, RoundsHalvesToEvenAndCorrectsWhatIsOutOfBounds) {
    const struct {
        const char16_t* typed;
        std::int32_t items;
        const char16_t* corrected;  // null: the text stays
    } rows[] = {
        {u"2000", 2000, nullptr},     {u"2000.5", 2000, nullptr},
        {u"2001.5", 2002, nullptr},   {u"5", 50, u"50"},
        {u"49.5", 50, nullptr},       {u"49.4", 50, u"50"},
        {u"50", 50, nullptr},         {u"10000", 10000, nullptr},
        {u"10000.5", 10000, nullptr}, {u"10000.6", 10000, u"10000"},
        {u"20000", 10000, u"10000"},  {u"1e99", 10000, u"10000"},
        {u"-7", 50, u"50"},           {u"", 50, u"50"},
        {u"many", 50, u"50"},         {u"300 items", 300, nullptr},
        {u"1e3", 1000, nullptr},
    };
    for (const auto& row : rows) {
        const ItemCount count = ReadItemCount(row.typed);
        EXPECT_EQ(count.Items, row.items) << Text(row.typed);
        EXPECT_EQ(count.Corrected.value_or(u"(stays)"),
                  Text(row.corrected ? row.corrected : u"(stays)"))
            << Text(row.typed);
    }
}

}  // namespace
}  // namespace zorvane
