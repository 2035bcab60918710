// Blocks without prefixes: the model runs mostly see those with them.

#include "zorvane/runtime/RecordOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <vector>

namespace zorvane {
namespace {

class RecordOrder_Blocks : public testing::Test {
  protected:
    // Blocks with room in each.
    void Begin(std::uint32_t blocks) {
        next_ = blocks * (RecordOrder::kBlock * 3 / 4);
        model_.resize(next_);
        std::iota(model_.begin(), model_.end(), 0u);
        order_.SetRun(0, next_);
        order_.ToBlocks();
    }
    void Insert(std::size_t position, std::size_t times) {
        for (; times > 0; --times) {
            order_.Insert(static_cast<std::uint32_t>(position), next_);
            model_.insert(model_.begin() + static_cast<std::ptrdiff_t>(position), next_++);
        }
    }
    void Erase(std::size_t position, std::size_t times) {
        for (; times > 0 && position < model_.size(); --times) {
            order_.Erase(static_cast<std::uint32_t>(position));
            model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(position));
        }
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
    RecordNumber next_ = 0;
};

// Catches a block that is split or dropped wrongly, a stale cursor, and a group of blocks whose
// move is forgotten, counted twice, or goes to others once some are added or dropped.
TEST_F(RecordOrder_Blocks, AnyInsertionAndRemovalKeepsTheOrder) {
    std::mt19937 random(11);
    // Blocks, changes at one place at most, and how fast it goes on.
    for (const auto& [blocks, most, step] : {std::array{2u, 3u, 1u}, {100u, 600u, 20u}}) {
        Begin(blocks);
        for (unsigned i = 0; i < 12'000 && !HasFatalFailure(); i += step) {
            const bool growing = i < 3000 || i > 9000;
            const std::size_t count = model_.size();
            const bool atEnd = random() % 4 == 0;
            const std::size_t at = atEnd ? random() % 2 * count : random() % (count + 1);
            if (random() % 100 < (growing ? 75u : 20u)) {
                Insert(at, 1 + random() % most);
            } else {
                Erase(at - std::min<std::size_t>(at, 1), 1 + random() % most);
            }
            if (i % 60 == 0) Check();
        }
    }
}

// Catches an insertion between two full blocks that makes room in one and then goes into the other.
TEST_F(RecordOrder_Blocks, APlaceBetweenFullBlocksHasRoomInEither) {
    Begin(2);
    Insert(10, RecordOrder::kBlock / 4);
    Insert(RecordOrder::kBlock + 10, RecordOrder::kBlock / 4);  // both are full now
    ASSERT_EQ(order_.At(0), 0u);                                // the first was looked at last
    Insert(RecordOrder::kBlock, 5);
    Check();
}

}  // namespace
}  // namespace zorvane
