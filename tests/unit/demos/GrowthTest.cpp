#include "program/demos/Growth.h"

#include <gtest/gtest.h>

namespace zorvane {
namespace {

TEST(Growth, KeepsTheFastestOfItsRoundsAndBeginsNoSizeAfterItsPatience) {
    TestData data;
    for (std::int32_t i = 0; i < TestData::kItems; ++i) {
        data.Keys.push_back(Text(u"key ") + Variant(i).ToText());
        data.Values.push_back(i);
    }
    double now = 0, step = 0.001;
    int readings = 0;
    // Every 500th reading lasts: what else a machine does.
    TimingRun run(std::move(data),
                  {[] { return 0.0F; }, [&] { return now += ++readings % 500 == 0 ? 0.1 : step; }});
    Growth growth;
    const auto sizesTimed = [&] {
        int sizes = 0;
        growth.Measure(run, [&] {
            EXPECT_TRUE(growth.At(1, 4, static_cast<std::size_t>(sizes)));
            ++sizes;
            EXPECT_FALSE(growth.At(1, 4, static_cast<std::size_t>(sizes)));
        });
        return sizes;
    };
    EXPECT_EQ(sizesTimed(), 3);  // some 1,300 readings each
    for (int test = 1; test <= 8; ++test) EXPECT_NEAR(growth.At(test, 2, 0)->Seconds, step, 1e-9);
    EXPECT_EQ(growth.At(7, 3, 1)->Operations, 50);
    step = 0;
    EXPECT_EQ(sizesTimed(), 8);
}

}  // namespace
}  // namespace zorvane
