#include "program/demos/Growth.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

TEST(Growth, KeepsTheFastestOfItsRoundsAndBeginsNoSizeAfterItsPatience) {
    Random random;
    double now = 0, step = 0.01;
    int readings = 0;
    // Every 37th reading lasts: what else a machine does.
    TimingRun run(BuildTestData(random),
                  {[] { return 0.0F; }, [&] { return now += ++readings % 37 == 0 ? 0.02 : step; }});
    Growth growth;
    const auto measure = [&] { growth.Measure(run, [] {}); };
    measure();
    EXPECT_TRUE(growth.At(1, 4, 1)) << "a size takes 64 readings, the least twice as many";
    EXPECT_FALSE(growth.At(1, 4, 3));
    step = 0.001;
    measure();
    for (std::size_t size = 0; size < Growth::kSizes.size(); ++size) {
        for (int test = 1; test <= 8; ++test) {
            EXPECT_NEAR(growth.At(test, 2, size)->Seconds, step, 1e-9) << size << ", " << test;
        }
    }
    EXPECT_EQ(growth.At(7, 3, 1)->Operations, 50);
}

}  // namespace
}  // namespace zorvane
