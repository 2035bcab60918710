#include "platform/Collection.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
}  // namespace zorvane
