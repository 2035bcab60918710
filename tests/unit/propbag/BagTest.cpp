// The store, beyond what the model run compares: equality, names, limits.

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "propbag/SameValue.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

// "name=value" of every entry, in order.
std::string Shown(const ZVPropertyBag& bag) {
    std::string shown;
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        shown += (i == 1 ? "" : " ") + bag.Key(i).ToUtf8() + "=" + bag.Item(i).ToText().ToUtf8();
    }
    return shown;
}

ZVPropertyBag BagOf(std::initializer_list<std::pair<const char16_t*, std::int32_t>> entries) {
    ZVPropertyBag bag;
    for (const auto& [name, value] : entries) bag.WriteProperty(name, value);
    return bag;
}

TEST(SameValue, KindsAreComparedByValueAndNothingElseIs) {
    const Array array = Array::OfWords(Words{1, 2, 3});
    const Variant object = MakeObject<CountedObject>();
    const Variant nan = std::numeric_limits<double>::quiet_NaN();
    const auto decimal = [](std::uint64_t low, std::uint8_t scale, std::uint32_t high = 0) {
        return Variant::FromDecimal({.Low = low, .High = high, .Scale = scale});
    };
    const struct {
        const char* what;
        Variant left;
        Variant right;
        bool same;
    } table[] = {
        {"byte and double", std::uint8_t{7}, 7.0, true},
        {"true and -1", true, -1, true},
        {"true and 1", true, 1, false},
        {"false and 400, a weight", std::int16_t{400}, false, false},
        {"inexact single", Variant(0.1F), 0.1, false},
        {"currency beyond 53 bits", Variant::FromCurrency((1LL << 60) + 1),
         Variant::FromCurrency(1LL << 60), false},
        {"decimal with zeros", decimal(1500, 3), Variant::FromCurrency(15000), true},
        {"decimal of 96 bits", decimal(0, 1, 15), decimal(1ull << 63, 0, 1), true},
        {"decimal, other", decimal(1, 1), decimal(1, 0), false},
        {"decimal minus zero", Variant::FromDecimal({.Scale = 2, .Negative = true}), 0, true},
        {"least Long", std::numeric_limits<std::int32_t>::min(),
         Variant::FromDecimal({.Low = 1ull << 31, .Negative = true}), true},
        {"date and its number", Variant::FromDate(2.5), 2.5, true},
        {"not a number", nan, nan, false},
        {"same text", u"Hi", u"Hi", true},
        {"case", u"Hi", u"hi", false},
        {"text and number", u"5", 5, false},
        {"empty text and Empty", u"", Variant(), false},
        {"Empty and 0", Variant(), 0, false},
        {"Empty and Empty", Variant(), Variant(), true},
        {"Null and Null", Variant::Null(), Variant::Null(), false},
        {"error codes", Variant::FromError(5), Variant::FromError(5), true},
        {"error code and number", Variant::FromError(5), 5, false},
        {"arrays", array, array, false},
        {"objects", object, object, false},
    };
    for (const auto& row : table) {
        EXPECT_EQ(SameValue(row.left, row.right), row.same) << row.what;
        EXPECT_EQ(SameValue(row.right, row.left), row.same) << row.what << ", turned round";
    }
}

TEST(ZVPropertyBag_Write, KeptWritingByPositionEndsNamesForGood) {
    ZVPropertyBag bag = BagOf({{u"b", 1}, {u"d", 2}});
    bag.WriteProperty(u"a", 3, {.Index = 2});
    bag.WriteProperty(u"b", 9);
    EXPECT_EQ(Shown(bag), "b=1 d=3");  // the entry keeps its name
    bag.WriteProperty(u"b", 4, {.Index = 7});
    EXPECT_EQ(Shown(bag), "b=1 d=3 b=4");
    EXPECT_EQ(WordsOf(bag).back(), 0);  // nor are names unique
    bag.Clear();
    EXPECT_TRUE(bag.Sorted());
    bag.WriteProperty(u"a", 0, {.Default = 0, .Index = 1});
    EXPECT_FALSE(bag.Sorted()) << "nothing was written, and yet by position";
}

TEST(ZVPropertyBag_Settings, GranularityIsClampedWhenAssigned) {
    ZVPropertyBag bag;
    for (const auto& [assigned, kept] :
         {std::pair{5, 16}, {17, 17}, {32768, 32768}, {32769, 32768}, {-1, 16}}) {
        bag.SetGranularity(assigned);
        EXPECT_EQ(bag.Granularity(), kept);
    }
}

TEST(ZVPropertyBag_Settings, KeptAGranularityOutOfTheWordsStandsAsReadAndDoesNoHarm) {
    for (const bool low : {true, false}) {
        Words words = TwoEntries();
        words[54] = low ? INT16_MIN : INT16_MAX;
        ZVPropertyBag bag;
        bag.SetContents(Array::OfWords(words));
        EXPECT_EQ(bag.Granularity(), (low ? INT32_MIN : 0x7FFF0000) + 16);
        for (int i = 0; i < 100; ++i) bag.WriteProperty("n" + std::to_string(i), i);
        EXPECT_EQ(bag.Count(), 102);
    }
}

TEST(ZVPropertyBag_Enumerate, ASnapshotStays) {
    ZVPropertyBag bag = BagOf({{u"b", 1}, {u"a", 2}, {u"c", 3}});
    Enumerator values = bag.NewEnum();
    bag.Clear();
    std::string shown;
    for (Variant value; values.Next(value);) shown += value.ToText().ToUtf8();
    EXPECT_EQ(shown, "213");
}

TEST(ZVPropertyBag_Move, TheSourceIsEmptyAndUsable) {
    ZVPropertyBag bag = BagOf({{u"a", 1}});
    ZVPropertyBag other = std::move(bag);
    bag = ZVPropertyBag();
    bag.WriteProperty(u"b", 2);
    EXPECT_EQ(Shown(other) + " " + Shown(bag), "a=1 b=2");
    static_assert(std::is_nothrow_move_constructible_v<ZVPropertyBag>);
    static_assert(std::is_nothrow_move_assignable_v<ZVPropertyBag>);
}

TEST(ZVPropertyBag_Arguments, MayLiveInsideTheBag) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"a", u"a text long enough to be worth sharing");
    for (int i = 0; i < 40; ++i) bag.Add(*bag.begin(), "n" + std::to_string(i));
    EXPECT_EQ(bag.Item(41), bag.Item(1));
    bag.WriteProperty(u"words", bag.Contents());
    bag.SetContents(bag.Item(u"words"));
    EXPECT_EQ(bag.Count(), 41);
    Variant value = bag.Item(1);
    bag.CopyItemValue(value, value);
    EXPECT_EQ(value, Variant());
}

TEST(ZVPropertyBag_Late, EveryMemberIsReachedByName) {
    const Ref<ZVPropertyBag> bag = MakeObject<ZVPropertyBag>();
    const Ref<ZVPropertyBag> other = MakeObject<ZVPropertyBag>();
    const Variant omitted = Variant::FromError(-2147352572);
    const Variant code = Variant::FromError(5);  // an error code, not an omission
    other->WriteProperty(u"o", 8);
    other->SetChanged(false);
    const struct {
        const char16_t* member;
        std::vector<Variant> arguments;
        Variant gives;
    } table[] = {
        {u"add", {1, u"b"}, 1},
        {u"ADD", {2, u"a", omitted, omitted, omitted, true}, 1},
        {u"Add", {2, u"a", omitted, omitted, 1}, std::int16_t{-28501}},
        {u"Count", {}, 2},
        {u"Item", {u"b"}, 1},
        {u"ItemFn", {2}, 1},
        {u"CopyItemValue", {2}, 1},
        {u"Key", {1}, u"a"},
        {u"ObjName", {1}, u""},
        {u"PropIsObject", {1}, false},
        {u"ClassName", {}, u"ZorvaneDemoProject.ZVPropertyBag"},
        {u"WriteProperty", {u"c", 5, 5}, Variant()},
        {u"WriteProperty", {u"d", 5}, Variant()},
        {u"ReadProperty", {u"c", u"default"}, u"default"},
        {u"ReadProperty", {u"x", omitted, 3}, 5},
        {u"Remove", {u"d"}, Variant()},
        {u"WriteProperty", {u"e", code}, Variant()},
        {u"ReadProperty", {u"e"}, code},
        {u"Sorted", {}, true},
        {u"Clear", {}, Variant()},
        {u"Count", {}, 0},
        {u"CopyFrom", {other, true}, Variant()},
        {u"Contents", {}, other->Contents()},
        {u"Changed", {}, true},
    };
    for (const auto& row : table) {
        EXPECT_EQ(bag->Call(row.member, row.arguments), row.gives) << Text(row.member);
    }
    bag->Set(u"Changed", false);
    EXPECT_EQ(bag->Get(u"Changed"), Variant(false));
    bag->Set(u"Granularity", u"20.5");
    EXPECT_EQ(bag->Get(u"Granularity"), Variant(20));
    bag->Set(u"Contents", 0);
    EXPECT_EQ(bag->TypeName().ToUtf8() + std::to_string(bag->Count()), "ZVPropertyBag0");
    const struct {
        const char* what;
        const char16_t* member;
        std::vector<Variant> arguments;
        std::int32_t number;
    } errors[] = {
        {"no such member", u"Items", {}, 438},
        {"argument missing", u"Item", {}, 5},
        {"no object", u"CopyFrom", {Ref<Object>()}, 91},
        {"no bag", u"CopyFrom", {MakeObject<CountedObject>()}, 13},
        {"no number", u"Key", {u"a"}, 13},
    };
    for (const auto& row : errors) {
        EXPECT_EQ(NumberRaisedBy([&] { bag->Call(row.member, row.arguments); }), row.number)
            << row.what;
    }
    EXPECT_EQ(NumberRaisedBy([&] { bag->Set(u"Sorted", true); }), 438);
}

}  // namespace
}  // namespace zorvane
