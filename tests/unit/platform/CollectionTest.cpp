#include "platform/Collection.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/AllocationFaults.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"
#include "tests/unit/platform/CollectionModelRun.h"

namespace zorvane {
namespace {

std::string ItemsOf(const Collection& collection) {
    std::string all;
    for (const Variant& item : collection) all += item.ToText().ToUtf8() + " ";
    return all;
}

Ref<Collection> Abc() {
    const auto collection = MakeObject<Collection>();
    collection->Add("a", {.Key = u"A"});
    collection->Add("b", {.Key = u"B"});
    collection->Add("c", {.Key = u"C"});
    return collection;
}

TEST(Collection_Add, PutsTheItemBeforeOrAfterAnEntryOrSaysWhyNot) {
    const struct {
        const char* what;
        CollectionAdd options;
        std::int32_t error;
        const char* items;
    } rows[] = {
        {"at the end", {}, 0, "a b c x "},
        {"before a position", {.Before = 1}, 0, "x a b c "},
        {"before a key, in another case", {.Before = u"b"}, 0, "a x b c "},
        {"after the last position", {.After = 3}, 0, "a b c x "},
        {"after a key", {.After = u"A"}, 0, "a x b c "},
        {"a position of another type", {.Before = 2.5}, 0, "a x b c "},
        {"a text is a key, not a number", {.Before = u"2"}, 5, "a b c "},
        {"both", {.Before = 1, .After = 1}, 5, "a b c "},
        {"no such key", {.After = u"z"}, 5, "a b c "},
        {"position 0", {.Before = 0}, 9, "a b c "},
        {"position past the end", {.Before = 4}, 9, "a b c "},
        {"a position that is none", {.Before = Variant::Null()}, 13, "a b c "},
        {"a key in use", {.Key = u"b"}, 457, "a b c "},
        {"an empty key", {.Key = Text()}, 0, "a b c x "},
    };
    for (const auto& row : rows) {
        const auto collection = Abc();
        EXPECT_EQ(NumberRaisedBy([&] { collection->Add("x", row.options); }), row.error)
            << row.what;
        EXPECT_EQ(ItemsOf(*collection), row.items) << row.what;
        EXPECT_EQ(collection->Item(u"c"), Variant("c")) << row.what;
        if (row.options.Key && row.error == 0) {
            EXPECT_EQ(NumberRaisedBy([&] { collection->Add("y", row.options); }), 457) << row.what;
        }
    }
}

TEST(Collection_Item, ATextIsAKeyAndAnythingElseAPosition) {
    const auto collection = Abc();
    EXPECT_EQ(collection->Item(std::int16_t{2}), Variant("b"));
    EXPECT_EQ(collection->Item(2.5), Variant("b"));
    EXPECT_EQ(collection->Item(u"b"), Variant("b"));
    for (const Variant& index : {Variant(0), Variant(4), Variant(-1)}) {
        EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(index)); }), 9);
        EXPECT_EQ(NumberRaisedBy([&] { collection->Remove(index); }), 9);
    }
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(u"cccc")); }), 5);
    EXPECT_EQ(NumberRaisedBy([&] { collection->Remove(u"cccc"); }), 5);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(collection->Item(1e10)); }), 6);
    EXPECT_EQ(collection->Count(), 3);
}

TEST(Collection_LateBound, ReachesEveryMemberByName) {
    const Ref<Object> collection = Abc();
    const Variant added[] = {Variant("x"), Variant(u"X"), Variant(1)};
    collection->Call(u"add", added);
    EXPECT_EQ(collection->Get(u"COUNT"), Variant(4));
    const Variant one[] = {Variant(1)};
    EXPECT_EQ(collection->Get(u"Item", one), Variant("x"));
    collection->Call(u"Remove", one);
    EXPECT_EQ(collection->Call(u"Item", one), Variant("a"));
    EXPECT_EQ(NumberRaisedBy([&] { collection->Call(u"Clear"); }), 438);
}

TEST(Collection_Remove, ReleasesTheItemOnceAndAfterEverythingStands) {
    Collection collection;
    std::int32_t seen = -1;
    collection.Add(MakeObject<CountedObject>([&] {
                       seen = collection.Count();
                       collection.Add("from the release", {.Key = u"key"});
                   }),
                   {.Key = u"key"});
    collection.Add("kept");
    collection.Remove(u"KEY");
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(ItemsOf(collection), "kept from the release ");
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Collection_End, LetsAReleaseAddToTheDyingCollection) {
    int calls = 0;
    {
        Collection collection;
        const auto callingBack = [&](Variant added) {
            return MakeObject<CountedObject>([&, added] {
                ++calls;
                collection.Add(added, {.Key = Text(u"again") + Variant(calls).ToText()});
                EXPECT_EQ(collection.Count(), 1);
            });
        };
        collection.Add(callingBack(callingBack(7)), {.Key = u"key"});
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Collection_End, LetsAReleaseLookIntoTheDyingCollection) {
    std::int32_t seen = -1;
    {
        Collection collection;
        collection.Add(MakeObject<CountedObject>([&] {
                           seen = collection.Count();
                           EXPECT_EQ(NumberRaisedBy([&] { collection.Remove(u"key"); }), 5);
                       }),
                       {.Key = u"key"});
    }
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Collection_Enumeration, GoesOnOverRemovalsWithoutLeavingTheItems) {
    const auto collection = Abc();
    int visited = 0;
    for (auto at = collection->begin(); at != collection->end(); ++at) {
        ++visited;
        collection->Remove(1);
    }
    EXPECT_EQ(visited, 2);
}

TEST(Collection_Memory, WhenItRunsOutTheEntriesStayAsTheyWere) {
    const auto make = [] {
        const auto collection = MakeObject<Collection>();
        // As many as the table of keys has room for: the next one makes it grow.
        for (int i = 1; i <= 16; ++i) collection->Add(i, {.Key = Text(u"K") + Variant(i).ToText()});
        return collection;
    };
    const std::string before = ItemsOf(*make());
    for (const int at : {1, 8, 16}) {
        const int failures = WithEveryAllocationFailing(
            make, [&](auto& c) { c->Add(99, {.Key = u"new", .After = at}); },
            [&](auto& c, bool failed) {
                if (failed) {
                    EXPECT_EQ(ItemsOf(*c), before) << at;
                }
                for (int i = 1; i <= 16; ++i) {
                    EXPECT_EQ(c->Item(Text(u"k") + Variant(i).ToText()), Variant(i)) << at;
                }
                EXPECT_EQ(NumberRaisedBy([&] { c->Add(0, {.Key = u"NEW"}); }), failed ? 0 : 457);
                c->Remove(u"new");
            });
        EXPECT_GT(failures, 1) << at;
    }
}

// Catches any step of any operation that leaves another state or outcome than a plain list.
TEST(Collection_Model, AgreesWithAPlainListOverRandomOperations) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        const auto disagreement = RunPlatformCollectionModel(seed, 2000);
        ASSERT_FALSE(disagreement) << "seed " << seed << ", " << *disagreement;
    }
}

}  // namespace
}  // namespace zorvane
