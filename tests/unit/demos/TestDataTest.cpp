#include "program/demos/TestData.h"

#include <set>

#include "tests/support/Testing.h"
#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

// One value, one length and then as many units as the length says, each from its own draw.
TEST(BuildTestData, TakesItsDrawsInTheStatedOrderAndReachesEveryLengthAndCode) {
    Random random;
    const TestData data = BuildTestData(random);
    Random same;
    const auto draw = [&](double factor, double least) {
        return std::nearbyint(static_cast<double>(same.Next()) * factor + least);
    };
    std::set<std::int32_t> lengths;
    std::set<char16_t> units;
    for (std::size_t i = 0; i < data.Keys.size(); ++i) {
        ASSERT_EQ(data.Values[i], draw(1000000, 0));
        ASSERT_EQ(data.Keys[i].Length(), draw(30, 8));
        lengths.insert(data.Keys[i].Length());
        for (const char16_t unit : data.Keys[i].Units()) {
            const double code = draw(128, 32);
            ASSERT_TRUE((code >= 128 && code <= 159) || unit == code);
            units.insert(unit);
        }
    }
    EXPECT_EQ(lengths.size(), 31u);
    EXPECT_EQ(units.size(), 129u);        // codes 32 to 160, each another character
    EXPECT_TRUE(units.contains(0x20AC));  // code 128 is the euro sign of the code page
    EXPECT_TRUE(units.contains(0x0081));  // code 129 is open in it and stays
    EXPECT_TRUE(units.contains(0x0178));  // code 159, the last of them
}

TEST(ReadItemCount, RoundsHalvesToEvenAndCorrectsWhatIsOutOfBounds) {
    const struct {
        const char16_t* typed;
        std::int32_t items;
        bool corrected = false;
    } rows[] = {
        {u"2000.5", 2000},   {u"2001.5", 2002},      {u"1e3", 1000},           {u"300 items", 300},
        {u"49.5", 50},       {u"49.4", 50, true},    {u"-7", 50, true},        {u"many", 50, true},
        {u"10000.5", 10000}, {u"1e99", 10000, true}, {u"10000.6", 10000, true}};
    for (const auto& [typed, items, corrected] : rows) {
        const ItemCount count = ReadItemCount(typed);
        EXPECT_EQ(count.Items, items) << Text(typed);
        EXPECT_EQ(count.Corrected.value_or(u"(stays)"), corrected ? LongText(items) : u"(stays)")
            << Text(typed);
    }
}

}  // namespace
}  // namespace zorvane
