#include "zorvane/platform/Collection.h"

#include <gtest/gtest.h>

namespace zorvane {
namespace {

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
