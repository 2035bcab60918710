#include "keylist/CollectionEx.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

template <class Items>
std::string Joined(const Items& items) {
    std::string all;
    for (const Variant& item : items) all += item.ToText().ToUtf8() + " ";
    return all;
}

CollectionEx Abc() {
    CollectionEx collection;
    for (const char* key : {"a", "b", "c"}) collection.Add(key, key);
    return collection;
}

TEST(CollectionEx_Exists, KeptComparesAPositionAsItStands) {
    const CollectionEx collection = Abc();
    const struct {
        Variant index;
        bool exists;
    } rows[] = {{0.5, false}, {1, true}, {2.5, true}, {3, true}, {3.5, false}, {Variant(), false}};
    for (const auto& row : rows) EXPECT_EQ(collection.Exists(row.index), row.exists) << row.index;
}

TEST(CollectionEx_SetMemory, KeptGrowsBeforeItLooksAtThePosition) {
    CollectionEx collection;
    for (std::int32_t i = 1; i <= 1000; ++i) collection.Add(i, Variant(i).ToText());
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add(0, u"1"); }), 457);
    EXPECT_EQ(collection.Capacity(), 1000);  // a key that is present needs no room
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add(0, u"new", {.Before = 0}); }), 9);
    EXPECT_EQ(collection.Capacity(), 2000);
}

TEST(CollectionEx_SetMemory, TakesAnyRatio) {
    const struct {
        const char* what;
        std::int32_t size;
        float ratio;
        std::int32_t slots;
    } rows[] = {
        {"as the timing run asks", 10000, 0, 15001},
        {"not a number", 20, std::numeric_limits<float>::quiet_NaN(), 31},
        {"more slots than there are numbers", 20, 1e30f, 2147483647},
    };
    for (const auto& row : rows) {
        CollectionEx collection;
        collection.SetMemory(row.size, 0, row.ratio);
        EXPECT_EQ(collection.Capacity(), row.size) << row.what;
        EXPECT_EQ(collection.TableSize(), row.slots) << row.what;
    }
}

TEST(CollectionEx_Clear, KeptLeavesSortedAsItIs) {
    CollectionEx collection = Abc();
    collection.SetSorted(true);
    collection.SetMemory(100, 20, 3);
    CollectionEx moved = std::move(collection);
    EXPECT_EQ(moved.TableSize(), 301) << "the plan moves along";
    moved.Clear();
    EXPECT_TRUE(moved.Sorted());
    EXPECT_FALSE(collection.Sorted());  // NOLINT: what is moved from is as if new
}

TEST(CollectionEx_NewEnum, KeptStillShowsWhatWasRemovedUntilTheNextAdd) {
    CollectionEx collection = Abc();
    EXPECT_EQ(Joined(collection.NewEnum()), "a b c ");
    collection.Remove(u"a");
    collection.SetSorted(true);
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add("x", u"b"); }), 457);
    EXPECT_EQ(Joined(collection.NewEnum()), "a b c ");  // a failed Add drops nothing
    collection.Add("x", u"b", {.Replace = true});
    const Enumerator running = collection.NewEnum();
    EXPECT_EQ(Joined(running), "x c ");
    collection.Clear();
    EXPECT_EQ(Joined(collection.NewEnum()), "");
    EXPECT_EQ(std::distance(running.begin(), running.end()), 2);  // keeps what it began with
}

TEST(CollectionEx_HashKey, FollowsTheFirst256UnitsOfTheLowerCasedKey) {
    const auto with = [](std::size_t count, std::u16string_view tail) {
        return std::u16string(count, u'a').append(tail);
    };
    const struct {
        const char* what;
        std::u16string key;
        std::int32_t hash;
    } rows[] = {
        {"empty", u"", 17},
        {"one unit, in upper case", u"A", 114},
        {"two units", u"ab", 326},
        {"first unit just below the sign", u"\u7FEE", 32767},
        {"first unit that wraps below 0", u"\u7FEF", -32768},
        {"wraps round to 0", u"\xFFEF", 0},
        {"a second unit hides the sign", u"\u7FEFa", 0x3FFF0061},
        {"30 bits are kept", with(40, u""), 0x3FFFFF9F},
        {"unit 256 counts", with(255, u"bzzz"), 0x3FFFFFA0},
        {"unit 257 does not", with(256, u"b"), 0x3FFFFF9F},
    };
    for (const auto& row : rows) EXPECT_EQ(CollectionEx::HashKey(row.key), row.hash) << row.what;
}

TEST(CollectionEx_Add, TakesArgumentsThatLiveInTheCollection) {
    CollectionEx collection;
    collection.Add(u"b", u"b");
    for (int i = 0; i < 100; ++i) {
        collection.Add(*collection.begin(), Text(u"key") + Variant(i).ToText(), {.Before = 1});
    }
    collection.Add(1, u"B", {.Before = *collection.begin(), .Replace = true});
    collection.Remove(collection.Item(1));  // names itself: the item is a key
    EXPECT_EQ(collection.Count(), 100);
    EXPECT_EQ(collection.Item(100), Variant(u"b"));
}

TEST(CollectionEx_LateBound, ReachesItsMembersByName) {
    CollectionEx made = Abc();
    Object& collection = made;
    const auto with = [&](const char16_t* member, std::vector<Variant> arguments) {
        return collection.Call(member, arguments);
    };
    with(u"add", {"x", u"X", Variant(), 1});
    with(u"add", {"y", u"a", Variant(), Variant(), true});
    EXPECT_EQ(Joined(made), "y x b c ");
    EXPECT_EQ(NumberRaisedBy([&] { with(u"Add", {"x"}); }), 5);
    EXPECT_EQ(with(u"Item", {u"x"}), Variant("x"));
    EXPECT_EQ(with(u"Index", {u"c"}), Variant(4));
    EXPECT_EQ(with(u"Key", {2}), Variant(u"x"));
    EXPECT_EQ(with(u"Exists", {u"y"}), Variant(false));
    with(u"Remove", {u"y", true});
    with(u"Remove", {u"x"});
    collection.Set(u"sorted", true);
    EXPECT_EQ(collection.Get(u"Sorted"), Variant(true));
    with(u"SetMemory", {100, 50, 2});
    EXPECT_EQ(made.Capacity(), 100);
    with(u"Clear", {});
    EXPECT_EQ(collection.Get(u"Count"), Variant(0));
    EXPECT_EQ(NumberRaisedBy([&] { collection.Set(u"Count", 1); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { collection.Get(u"NoSuch"); }), 438);
}

// Catches a key that is read after growth has moved the entry in which it lives.
TEST(CollectionEx_Add, AKeyMayLiveInTheCollection) {
    CollectionEx list;
    const auto text = [](int i) { return Text("text" + std::to_string(i)); };
    for (int i = 0; i < list.Capacity(); ++i) list.Add(text(i), Text("k" + std::to_string(i)));
    list.Add(1, list.begin()->AsText());
    EXPECT_EQ(list.Item(u"text0"), Variant(1));
}

}  // namespace
}  // namespace zorvane
