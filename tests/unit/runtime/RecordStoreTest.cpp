#include "runtime/RecordStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "platform/Variant.h"
#include "tests/unit/CountedObject.h"

namespace zorvane {
namespace {

struct Record {
    Variant item;
    std::int32_t serial = 0;
};

class RecordStoreRun {
  public:
    void Insert(std::int32_t position) {
        const RecordNumber number = store_.Insert(position);
        Record& record = store_.OfNumber(number);
        ASSERT_TRUE(record.item.IsEmpty() && record.serial == 0) << "a new record is not zero";
        record.item = Ref<Object>(MakeObject<CountedObject>());
        record.serial = ++serial_;
        model_.insert(model_.begin() + (position - 1), {serial_, number});
    }
    void Erase(std::int32_t position) {
        store_.PrepareErase(position);
        const Record doomed = std::move(store_.At(position));
        store_.Erase(position);
        model_.erase(model_.begin() + (position - 1));
    }
    void Reorder(std::mt19937& random) {
        std::vector<std::uint32_t> order(model_.size());
        for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
        std::shuffle(order.begin(), order.end(), random);
        store_.Reorder(order, [](auto&&) {});
        const auto before = model_;
        for (std::uint32_t i = 0; i < order.size(); ++i) {
            model_[i] = {before[order[i]].serial,
                         store_.NumberAt(static_cast<std::int32_t>(i) + 1)};
        }
    }
    void Check() const {
        ASSERT_EQ(static_cast<std::size_t>(store_.Count()), model_.size());
        ASSERT_EQ(static_cast<std::size_t>(CountedObject::Alive()), model_.size());
        for (std::int32_t i = 1; i <= store_.Count(); ++i) {
            const Entry& entry = model_[static_cast<std::size_t>(i) - 1];
            ASSERT_EQ(store_.At(i).serial, entry.serial) << "position " << i;
            ASSERT_EQ(store_.NumberAt(i), entry.number)
                << "a number changed while its record lived";
            ASSERT_EQ(store_.PositionOf(entry.number), i);
        }
        const std::int32_t middle = store_.Count() / 2;
        std::int32_t asked = 0;
        ASSERT_EQ(store_.PartitionPoint([&](const Record& record) {
            ++asked;
            return PositionOfSerial(record.serial) <= middle;
        }),
                  middle + 1);
        ASSERT_LE(asked, 64) << "the search is no longer logarithmic";
    }
    [[nodiscard]] std::int32_t Count() const { return store_.Count(); }

  private:
    struct Entry {
        std::int32_t serial;
        RecordNumber number;
    };
    [[nodiscard]] std::int32_t PositionOfSerial(std::int32_t serial) const {
        const auto found = std::ranges::find(model_, serial, &Entry::serial);
        return static_cast<std::int32_t>(found - model_.begin()) + 1;
    }

    RecordStore<Record> store_;
    std::vector<Entry> model_;
    std::int32_t serial_ = 0;
};

// Catches a block that is split or dropped wrongly, a stale cursor, a number given out twice, a
// record lost when the array wraps or grows, and one released twice or never.
TEST(RecordStore, AnyInsertionAndRemovalKeepsPositionsAndNumbers) {
    const struct {
        const char* what;
        unsigned ends;  // percent of operations at an end
        int grow;       // operations that mostly insert
    } rows[] = {{"a run", 100, 3000},
                {"mostly a run", 95, 1500},
                {"blocks", 10, 4000},
                {"small blocks", 30, 200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::mt19937 random(11);
        {
            RecordStoreRun run;
            for (int i = 0; i < row.grow * 3 && !testing::Test::HasFatalFailure(); ++i) {
                const bool growing = i < row.grow || i > row.grow * 2 + row.grow / 2;
                const auto count = static_cast<unsigned>(run.Count());
                const bool atEnd = random() % 100 < row.ends;
                if (count == 0 || random() % 100 < (growing ? 75u : 30u)) {
                    const unsigned place = atEnd ? (random() % 2) * count : random() % (count + 1);
                    run.Insert(static_cast<std::int32_t>(place) + 1);
                } else {
                    const unsigned place = atEnd ? (random() % 2) * (count - 1) : random() % count;
                    run.Erase(static_cast<std::int32_t>(place) + 1);
                }
                if (random() % 500 == 0) run.Reorder(random);
                if (i % 53 == 0) run.Check();
            }
            while (run.Count() > 0) run.Erase(run.Count() > 3 ? 2 : 1);
            run.Insert(1);
            run.Check();
        }
        EXPECT_EQ(CountedObject::Alive(), 0);
    }
}

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
