// Beyond what the model runs come to.

#include "zorvane/runtime/RecordOrder.h"

#include <numeric>

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

// Catches an insertion between two full blocks that makes room in one and then goes into the other,
// and one whose number finds no place of its own among the owners, as that table was full.
TEST(RecordOrder_Blocks, APlaceBetweenFullBlocksHasRoomInEither) {
    constexpr std::uint32_t kBlock = RecordOrder::kBlock;
    std::vector<RecordNumber> model(kBlock * 3 / 4 * 2);
    std::iota(model.begin(), model.end(), 0u);
    RecordOrder order;
    order.SetRun(0, kBlock * 3 / 4 * 2);
    order.ToBlocks();
    const auto insert = [&](std::uint32_t at, std::uint32_t times) {
        for (; times > 0; --times) {
            const auto next = static_cast<RecordNumber>(model.size());
            order.Insert(at, next);
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), next);
        }
    };
    insert(10, kBlock / 4);
    insert(kBlock + 10, kBlock / 4);  // both are full now
    ASSERT_EQ(order.At(0), 0u);       // the first was looked at last
    insert(kBlock, 1);
    ASSERT_EQ(order.Count(), model.size());
    for (std::uint32_t i = 0; i < order.Count(); ++i) {
        ASSERT_EQ(order.At(i), model[i]) << "position " << i;
        ASSERT_EQ(order.PositionOf(model[i]), i);
    }
}

}  // namespace
}  // namespace zorvane
