#include "keylist/CollectionEx.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "platform/CaseMapping.h"
#include "tests/support/AllocationFaults.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

std::string ItemsOf(const CollectionEx& collection) {
    std::string all;
    for (const Variant& item : collection) all += item.ToText().ToUtf8() + " ";
    return all;
}

CollectionEx Abc() {
    CollectionEx collection;
    collection.Add("a", u"A");
    collection.Add("b", u"B");
    collection.Add("c", u"C");
    return collection;
}

std::u16string Units(std::size_t count, char16_t unit) {
    return std::u16string(count, unit);
}

TEST(CollectionEx_Add, PutsTheItemWhereItIsToldOrRaisesAndAddsNothing) {
    const struct {
        const char* what;
        const char16_t* key;
        CollectionExAdd options;
        std::int32_t error;
        const char* items;
    } rows[] = {
        {"at the end", u"x", {}, 0, "a b c x "},
        {"before a position", u"x", {.Before = 1}, 0, "x a b c "},
        {"before a key in another case", u"x", {.Before = u"b"}, 0, "a x b c "},
        {"after a position", u"x", {.After = 1}, 0, "a x b c "},
        {"after the last", u"x", {.After = u"C"}, 0, "a b c x "},
        {"a half goes to the even position", u"x", {.Before = 2.5}, 0, "a x b c "},
        {"a text is a key, not a position", u"x", {.Before = u"1"}, 5, "a b c "},
        {"both", u"x", {.Before = 1, .After = 1}, 5, "a b c "},
        {"position 0", u"x", {.Before = 0}, 9, "a b c "},
        {"position past the end", u"x", {.After = 4}, 9, "a b c "},
        {"greatest position", u"x", {.After = 2147483647}, 9, "a b c "},
        {"no position at all", u"x", {.After = Variant::Null()}, 13, "a b c "},
        {"key present, in another case", u"b", {}, 457, "a b c "},
        {"key present decides before both", u"b", {.Before = 1, .After = 1}, 457, "a b c "},
        {"replaced where it stands", u"b", {.Before = 1, .Replace = true}, 0, "a x c "},
        {"both do not matter to a replacement",
         u"b",
         {.Before = 1, .After = 1, .Replace = true},
         0,
         "a x c "},
        {"nothing to replace", u"x", {.Replace = true}, 0, "a b c x "},
        {"an empty key is a key", u"", {}, 0, "a b c x "},
    };
    for (const auto& row : rows) {
        CollectionEx collection = Abc();
        EXPECT_EQ(NumberRaisedBy([&] { collection.Add("x", row.key, row.options); }), row.error)
            << row.what;
        EXPECT_EQ(ItemsOf(collection), row.items) << row.what;
        if (row.error == 0) {
            EXPECT_EQ(collection.Item(row.key), Variant("x")) << row.what;
        }
    }
}

TEST(CollectionEx_Add, WhileSortedFollowsTheKeyAndIgnoresBeforeAndAfter) {
    CollectionEx collection;
    collection.SetSorted(true);
    for (const char16_t* key : {u"b", u"_", u"C", u"a", u"Z", u"9"}) {
        collection.Add(key, key, {.Before = 7, .After = u"absent"});
    }
    EXPECT_EQ(ItemsOf(collection), "9 _ a b C Z ");
    EXPECT_EQ(collection.Key(6), Text(u"z"));
}

TEST(CollectionEx_Sorted, AssignedTrueSortsAndFalseLeavesTheOrder) {
    CollectionEx collection;
    for (const char16_t* key : {u"b", u"C", u"a"}) collection.Add(key, key);
    collection.SetSorted(true);
    EXPECT_EQ(ItemsOf(collection), "a b C ");
    for (const char16_t* key : {u"A", u"B", u"c"}) {
        EXPECT_EQ(collection.Key(collection.Index(key)), LowerCase(key));
    }
    collection.SetSorted(false);
    collection.Add("x", u"0");
    EXPECT_EQ(ItemsOf(collection), "a b C x ");
    collection.SetSorted(true);
    EXPECT_EQ(ItemsOf(collection), "x a b C ");
}

TEST(CollectionEx_Key, IsLowerCasedAndFoundInEveryCase) {
    CollectionEx collection;
    const Text given(u"aBC");
    collection.Add(1, given);
    EXPECT_EQ(collection.Key(1), Text(u"abc"));
    EXPECT_EQ(given, Text(u"aBC"));
    EXPECT_EQ(collection.Index(u"Abc"), 1);
    EXPECT_EQ(collection.Index(u"abcd"), -1);
    for (const std::int32_t position : {0, 2, -1}) {
        EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection.Key(position)); }), 9);
    }
}

TEST(CollectionEx_Key, LettersThatOnlyFoldTogetherAreTwoKeys) {
    CollectionEx collection;
    collection.Add("final", u"\u03C2");
    collection.Add("plain", u"\u03C3");
    EXPECT_EQ(collection.Item(u"\u03C2"), Variant("final"));
    EXPECT_EQ(collection.Item(u"\u03A3"), Variant("plain"));  // lower-cased: the plain one
}

TEST(CollectionEx_Item, ATextIsAKeyAndAnythingElseAPosition) {
    const CollectionEx collection = Abc();
    EXPECT_EQ(collection.Item(u"B"), Variant("b"));
    EXPECT_EQ(collection.Item(std::int16_t{2}), Variant("b"));
    EXPECT_EQ(collection.Item(1.5), Variant("b"));
    const struct {
        Variant index;
        std::int32_t error;
    } rows[] = {{u"cccc", 5}, {u"1", 5}, {0, 9}, {4, 9}, {Variant::Null(), 13}, {1e10, 6}};
    for (const auto& row : rows) {
        EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection.Item(row.index)); }), row.error)
            << row.index;
    }
}

TEST(CollectionEx_Remove, QuietSkipsMissingEntriesAndNotBadTypes) {
    const struct {
        Variant index;
        std::int32_t error;
        std::int32_t quietError;
        const char* items;
    } rows[] = {
        {u"B", 0, 0, "a c "},
        {3, 0, 0, "a b "},
        {2.5, 0, 0, "a c "},
        {u"z", 5, 0, "a b c "},
        {0, 9, 0, "a b c "},
        {4, 9, 0, "a b c "},
        {Variant::Null(), 13, 13, "a b c "},
    };
    for (const auto& row : rows) {
        CollectionEx loud = Abc();
        EXPECT_EQ(NumberRaisedBy([&] { loud.Remove(row.index); }), row.error) << row.index;
        EXPECT_EQ(ItemsOf(loud), row.items) << row.index;
        CollectionEx quiet = Abc();
        EXPECT_EQ(NumberRaisedBy([&] { quiet.Remove(row.index, true); }), row.quietError);
        EXPECT_EQ(ItemsOf(quiet), row.items) << row.index;
    }
}

TEST(CollectionEx_Exists, KeptComparesAPositionAsItStands) {
    CollectionEx collection = Abc();
    const struct {
        Variant index;
        bool exists;
    } rows[] = {{u"A", true}, {u"cccc", false}, {u"1", false},     {1, true},
                {3, true},    {0, false},       {4, false},        {2.5, true},
                {3.5, false}, {0.5, false},     {Variant(), false}};
    for (const auto& row : rows) EXPECT_EQ(collection.Exists(row.index), row.exists) << row.index;
    collection.Remove(3);
    EXPECT_FALSE(collection.Exists(2.5));
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection.Exists(Variant::Null())); }), 13);
}

TEST(CollectionEx_SetMemory, RaisesWhatIsTooSmallAndNeverGoesBelowTheCount) {
    const struct {
        const char* what;
        std::int32_t entries, size, step;
        float ratio;
        std::int32_t capacity, slots, afterClear;
    } rows[] = {
        {"minimums", 0, 5, 5, 1.0f, 20, 31, 20},
        {"as the timing run asks", 0, 10000, 0, 0, 10000, 15001, 10000},
        {"an even number of slots gets one more", 0, 100, 100, 2.0f, 100, 201, 100},
        {"a half slot goes to the even number", 0, 25, 25, 1.5f, 25, 39, 25},
        {"with entries", 30, 50, 20, 2.0f, 50, 101, 50},
        {"less than the entries", 30, 20, 20, 2.0f, 30, 61, 20},
        {"not a number", 0, 20, 20, std::numeric_limits<float>::quiet_NaN(), 20, 31, 20},
        {"more slots than there are numbers", 0, 20, 20, 1e30f, 20, 2147483647, 20},
    };
    for (const auto& row : rows) {
        CollectionEx collection;
        for (std::int32_t i = 0; i < row.entries; ++i) collection.Add(i, Variant(i).ToText());
        collection.SetMemory(row.size, row.step, row.ratio);
        EXPECT_EQ(collection.Capacity(), row.capacity) << row.what;
        EXPECT_EQ(collection.TableSize(), row.slots) << row.what;
        EXPECT_EQ(collection.Count(), row.entries) << row.what;
        if (row.entries > 0) {
            EXPECT_EQ(collection.Item(u"7"), Variant(7)) << row.what;
        }
        collection.Clear();
        EXPECT_EQ(collection.Capacity(), row.afterClear) << row.what;
    }
}

TEST(CollectionEx_Growth, AddsTheStepWithTheEntryThatFindsItFull) {
    CollectionEx collection;
    for (std::int32_t i = 1; i <= 1000; ++i) collection.Add(i, Variant(i).ToText());
    EXPECT_EQ(collection.Capacity(), 1000);
    EXPECT_EQ(collection.TableSize(), 2001);
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add(0, u"1"); }), 457);
    EXPECT_EQ(collection.Capacity(), 1000);  // a key that is present needs no room
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add(0, u"new", {.Before = 0}); }), 9);
    EXPECT_EQ(collection.Capacity(), 2000);  // Kept: it grows before it looks at the position
    collection.Add(1001, u"1001");
    EXPECT_EQ(collection.Capacity(), 2000);
    EXPECT_EQ(collection.TableSize(), 4001);
}

TEST(CollectionEx_SetMemory, AStepThatIsTooSmallBecomesTheInitialSize) {
    CollectionEx collection;
    collection.SetMemory(30, 19, 2);
    for (std::int32_t i = 1; i <= 31; ++i) collection.Add(i, Variant(i).ToText());
    EXPECT_EQ(collection.Capacity(), 60);
}

TEST(CollectionEx_Clear, KeptLeavesSortedAsItIs) {
    CollectionEx collection = Abc();
    collection.SetSorted(true);
    collection.Clear();
    EXPECT_TRUE(collection.Sorted());
    EXPECT_EQ(collection.Count(), 0);
    EXPECT_FALSE(collection.Exists(u"a"));
}

TEST(CollectionEx_NewEnum, KeptStillShowsWhatWasRemovedUntilTheNextAdd) {
    CollectionEx collection = Abc();
    const auto shown = [&] {
        std::string all;
        for (const Variant& item : collection.NewEnum()) all += item.ToText().ToUtf8() + " ";
        return all;
    };
    EXPECT_EQ(shown(), "a b c ");
    collection.Remove(u"a");
    collection.SetSorted(true);
    EXPECT_EQ(shown(), "a b c ");
    EXPECT_EQ(NumberRaisedBy([&] { collection.Add("x", u"b"); }), 457);
    EXPECT_EQ(shown(), "a b c ");  // a failed Add drops nothing
    collection.Add("x", u"b", {.Replace = true});
    EXPECT_EQ(shown(), "x c ");
    const Enumerator running = collection.NewEnum();
    collection.Clear();
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(std::distance(running.begin(), running.end()), 2);  // keeps what it began with
}

TEST(CollectionEx_HashKey, FollowsTheFirst256UnitsOfTheLowerCasedKey) {
    const struct {
        const char* what;
        std::u16string key;
        std::int32_t hash;
    } rows[] = {
        {"empty", u"", 17},
        {"one unit", u"a", 114},
        {"in another case", u"A", 114},
        {"two units", u"ab", 326},
        {"first unit just below the sign", u"\u7FEE", 32767},
        {"first unit that wraps below 0", u"\u7FEF", -32768},
        {"wraps round to 0", u"\xFFEF", 0},
        {"a second unit hides the sign", u"\u7FEFa", 0x3FFF0061},
        {"30 bits are kept", Units(40, u'a'), 0x3FFFFF9F},
        {"unit 256 counts", Units(255, u'a') + u"b" + Units(3, u'z'), 0x3FFFFFA0},
        {"unit 257 does not", Units(256, u'a') + u"b", 0x3FFFFF9F},
    };
    for (const auto& row : rows) EXPECT_EQ(CollectionEx::HashKey(row.key), row.hash) << row.what;
}

// Where a hash is weak, equality has to tell the keys apart.
TEST(CollectionEx_WeakHash, KeepsKeysApartWhoseHashesAgree) {
    std::vector<std::u16string> keys;
    // x, y and x+1, y-2 hash alike.
    for (char16_t i = 0; i < 20; ++i) {
        keys.push_back({static_cast<char16_t>(0x4E00 + i), static_cast<char16_t>(0x5000 - 2 * i)});
    }
    keys.push_back(Units(256, u'k') + u"1");
    keys.push_back(Units(256, u'k') + u"2");
    keys.push_back(Units(128, u'k') + u"1");
    keys.push_back(Units(128, u'k') + u"2");
    keys.push_back(u"\u8000");
    keys.push_back(u"\uFFEF");
    CollectionEx collection;
    for (const auto& key : keys) collection.Add(key, key);
    EXPECT_EQ(CollectionEx::HashKey(keys[0]), CollectionEx::HashKey(keys[19]));
    for (std::size_t middle = keys.size() / 2; !keys.empty(); middle = keys.size() / 2) {
        for (const auto& key : keys) ASSERT_EQ(collection.Item(key), Variant(key));
        collection.Remove(keys[middle]);
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(middle));
    }
    EXPECT_EQ(collection.Count(), 0);
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

TEST(CollectionEx_Release, ComesOnceAndAfterTheCollectionStands) {
    const struct {
        const char* what;
        void (*end)(CollectionEx&);
        std::int32_t countSeen;
    } rows[] = {
        {"Remove", [](CollectionEx& c) { c.Remove(u"object"); }, 1},
        {"Replace", [](CollectionEx& c) { c.Add(1, u"object", {.Replace = true}); }, 2},
        {"Clear", [](CollectionEx& c) { c.Clear(); }, 0},
        {"assignment", [](CollectionEx& c) { c = CollectionEx(); }, 0},
        {"Add drops the snapshot",
         [](CollectionEx& c) {
             static_cast<void>(c.NewEnum());
             c.Remove(u"object");
             c.Add(1, u"new");
         },
         2},
    };
    for (const auto& row : rows) {
        std::int32_t seen = -1;
        {
            CollectionEx collection;
            collection.Add(1, u"first");
            collection.Add(MakeObject<CountedObject>([&] {
                               seen = collection.Count();
                               collection.Remove(u"absent", true);
                               collection.Add(2, u"from the release", {.Replace = true});
                           }),
                           u"object");
            row.end(collection);
            EXPECT_EQ(seen, row.countSeen) << row.what;
            EXPECT_EQ(collection.Item(u"from the release"), Variant(2)) << row.what;
        }
        EXPECT_EQ(CountedObject::Alive(), 0) << row.what;
    }
}

TEST(CollectionEx_Release, OfACollectionThatHoldsItselfWaitsForClear) {
    const auto collection = MakeObject<CollectionEx>();
    collection->Add(collection, u"itself");
    collection->Add(MakeObject<CountedObject>(), u"object");
    EXPECT_EQ(CountedObject::Alive(), 1);
    collection->Clear();
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(CollectionEx_End, LetsAReleaseAddToTheDyingCollection) {
    int calls = 0;
    {
        CollectionEx collection;
        const auto callingBack = [&](Variant added) {
            return MakeObject<CountedObject>([&, added] {
                ++calls;
                collection.Add(added, Text(u"again") + Variant(calls).ToText());
                EXPECT_EQ(collection.Count(), 1);
            });
        };
        collection.Add(callingBack(callingBack(7)), u"key");
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(CollectionEx_End, LetsAReleaseLookIntoTheDyingCollection) {
    std::int32_t seen = -1;
    {
        CollectionEx collection;
        collection.Add(MakeObject<CountedObject>([&] { seen = collection.Count(); }), u"key");
    }
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(CollectionEx_LateBound, ReachesItsMembersByName) {
    CollectionEx made = Abc();
    Object& collection = made;
    const auto with = [&](const char16_t* member, std::vector<Variant> arguments) {
        return collection.Call(member, arguments);
    };
    with(u"add", {"x", u"X", Variant(), 1});
    EXPECT_EQ(ItemsOf(made), "a x b c ");
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

TEST(CollectionEx_Memory, WhenItRunsOutTheEntriesStayAsTheyWere) {
    const struct {
        const char* what;
        void (*operate)(CollectionEx&);
    } rows[] = {
        {"Add", [](CollectionEx& c) { c.Add(99, u"New"); }},
        {"Add in the middle", [](CollectionEx& c) { c.Add(99, u"New", {.Before = 7}); }},
        {"Replace", [](CollectionEx& c) { c.Add(99, u"K7", {.Replace = true}); }},
        {"Remove in the middle", [](CollectionEx& c) { c.Remove(u"K7"); }},
        {"Sorted", [](CollectionEx& c) { c.SetSorted(true); }},
        {"SetMemory", [](CollectionEx& c) { c.SetMemory(5000, 20, 2); }},
        {"NewEnum", [](CollectionEx& c) { static_cast<void>(c.NewEnum()); }},
    };
    const auto make = [] {
        CollectionEx collection;
        collection.SetMemory(20, 20, 2);
        for (int i = 20; i > 0; --i) collection.Add(i, Text(u"K") + Variant(i).ToText());
        return collection;
    };
    for (const auto& row : rows) {
        const std::string before = ItemsOf(make());
        const int failures =
            WithEveryAllocationFailing(make, row.operate, [&](CollectionEx& c, bool failed) {
                if (failed) {
                    EXPECT_EQ(ItemsOf(c), before) << row.what;
                }
                for (int i = 1; i <= 20 && failed; ++i) {
                    EXPECT_EQ(c.Item(Text(u"k") + Variant(i).ToText()), Variant(i)) << row.what;
                }
                c.Add(0, u"after");
                EXPECT_TRUE(c.Exists(u"AFTER")) << row.what;
            });
        EXPECT_GT(failures, 0) << row.what;
    }
}

}  // namespace
}  // namespace zorvane
