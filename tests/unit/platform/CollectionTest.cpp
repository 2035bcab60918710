#include "platform/Collection.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/AllocationFaults.h"
#include "tests/support/ReleaseAtEnd.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

std::string ItemsOf(const Collection& collection) {
    std::string all;
    for (const Variant& item : collection) all += item.ToText().ToUtf8() + " ";
    return all;
}

TEST(Collection_LateBound, ReachesEveryMemberByName) {
    const Ref<Object> collection = MakeObject<Collection>();
    const Variant x[] = {"x", u"X", Variant(), Variant()};
    const Variant y[] = {"y", Variant(), 1};
    const Variant one[] = {1};
    collection->Call(u"add", x);
    collection->Call(u"Add", y);
    EXPECT_EQ(collection->Get(u"COUNT"), Variant(2));
    EXPECT_EQ(collection->Get(u"Item", one), Variant("y"));
    collection->Call(u"Remove", one);
    EXPECT_EQ(collection->Call(u"Item", one), Variant("x"));
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

TEST(Collection_End, LetsAReleaseLookIntoTheDyingCollectionAndAddToIt) {
    ExpectReleasesMayAddAtTheEnd<Collection>(
        [](Collection& c, const Variant& item, const Text& key) {
            // While the first entry is released, the second still lives, but not in the collection.
            EXPECT_EQ(NumberRaisedBy([&] { c.Remove(u"second"); }), 5);
            c.Add(item, {.Key = key});
            if (key == Text(u"key")) c.Add(2, {.Key = u"second"});
        });
}

TEST(Collection_Enumeration, GoesOnOverRemovalsWithoutLeavingTheItems) {
    Collection collection;
    for (const int item : {1, 2, 3}) collection.Add(item);
    int visited = 0;
    for (auto at = collection.begin(); at != collection.end(); ++at) {
        ++visited;
        collection.Remove(1);
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

}  // namespace
}  // namespace zorvane
