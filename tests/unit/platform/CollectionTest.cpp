#include "platform/Collection.h"

#include <gtest/gtest.h>

#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

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
