// Blocks without prefixes: the model runs mostly see those with them.

#include "runtime/RecordOrder.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zorvane {
namespace {

constexpr std::uint32_t kCount = RecordOrder::kBlock * 3 / 2;  // two blocks, with room in each

class RecordOrder_Blocks : public testing::Test {
  protected:
    RecordOrder_Blocks() {
        for (RecordNumber n = 0; n < kCount; ++n) model_.push_back(n);
        order_.SetRun(0, kCount);
        order_.ToBlocks();
    }
    void Insert(std::size_t position, int times = 1) {
        for (; times > 0; --times) {
            order_.Insert(static_cast<std::uint32_t>(position), next_);
            model_.insert(model_.begin() + static_cast<std::ptrdiff_t>(position), next_++);
        }
    }
    void Erase(std::size_t position) {
        order_.Erase(static_cast<std::uint32_t>(position));
        model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(position));
    }
    void Check() const {
        ASSERT_EQ(order_.Count(), model_.size());
        for (std::uint32_t i = 0; i < order_.Count(); ++i) {
            ASSERT_EQ(order_.At(i), model_[i]) << "position " << i;
            ASSERT_EQ(order_.PositionOf(model_[i]), i);
        }
    }

    RecordOrder order_;
    std::vector<RecordNumber> model_;
    RecordNumber next_ = kCount;
};

// Catches a block that is split or dropped wrongly, and a stale cursor.
TEST_F(RecordOrder_Blocks, AnyInsertionAndRemovalKeepsTheOrder) {
    std::mt19937 random(11);
    for (int i = 0; i < 12'000 && !HasFatalFailure(); ++i) {
        const bool growing = i < 3000 || i > 9000;
        const std::size_t count = model_.size();
        const bool atEnd = random() % 4 == 0;
        if (count < 2 || random() % 100 < (growing ? 75u : 20u)) {
            Insert(atEnd ? random() % 2 * count : random() % (count + 1));
        } else {
            Erase(atEnd ? random() % 2 * (count - 1) : random() % count);
        }
        if (i % 61 == 0) Check();
    }
}

// Catches an insertion between two full blocks that makes room in one and then goes into the other.
TEST_F(RecordOrder_Blocks, APlaceBetweenFullBlocksHasRoomInEither) {
    Insert(10, RecordOrder::kBlock / 4);
    Insert(RecordOrder::kBlock + 10, RecordOrder::kBlock / 4);  // both are full now
    ASSERT_EQ(order_.At(0), 0u);                                // the first was looked at last
    Insert(RecordOrder::kBlock, 5);
    Check();
}

}  // namespace
}  // namespace zorvane
