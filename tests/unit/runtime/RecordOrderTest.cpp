#include "runtime/RecordOrder.h"

#include <gtest/gtest.h>

#include <vector>

namespace zorvane {
namespace {

// Catches an insertion between two full blocks that makes room in one and then goes into the other.
TEST(RecordOrder, APlaceBetweenFullBlocksHasRoomInEither) {
    RecordOrder order;
    std::vector<RecordNumber> model(768);
    for (RecordNumber n = 0; n < model.size(); ++n) model[n] = n;
    order.SetRun(0, 768);
    order.ToBlocks();
    const auto insert = [&](std::uint32_t position, int times) {
        for (; times > 0; --times) {
            const auto number = static_cast<RecordNumber>(model.size());
            order.Insert(position, number);
            model.insert(model.begin() + position, number);
        }
    };
    insert(10, 128);
    insert(600, 128);            // both of two blocks are full
    ASSERT_EQ(order.At(0), 0u);  // the first was looked at last
    insert(RecordOrder::kBlock, 5);
    for (std::uint32_t i = 0; i < model.size(); ++i) {
        ASSERT_EQ(order.At(i), model[i]);
        ASSERT_EQ(order.PositionOf(model[i]), i);
    }
}

}  // namespace
}  // namespace zorvane
