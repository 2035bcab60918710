#include <gtest/gtest.h>

#include "tests/models/StepRun.h"

namespace zorvane {
namespace {

// Catches any step of any operation that leaves another state or outcome than the literal steps.
TEST(Models, AnyMixOfOperationsAgreesWithTheLiteralSteps) {
    // The longer ones are calm: see KeyedRun.
    for (const Modelled& modelled : kModelled) {
        for (const std::uint32_t seed : {1u, 2u, 3u, 4u, 6u, 7u, 8u, 9u, 10u, 11u, 12u}) {
            ASSERT_EQ(RunSeed(modelled, seed, 2000), "");
        }
        for (const std::uint32_t seed : {5u, 15u, 25u, 65u, 85u}) {
            ASSERT_EQ(RunSeed(modelled, seed, 8000), "");
        }
    }
}

// Catches an operation that is half done when memory runs out, and one that cannot be tried again.
TEST(Models, AnOperationThatRanOutOfMemoryIsAsIfNeverTried) {
    for (const Modelled& modelled : kModelled) {
        for (std::uint32_t seed = 1; seed <= 9; ++seed) {
            ASSERT_EQ(RunSeed(modelled, kFailing + seed, 500), "");
        }
    }
}

// A counter that is wrong from its third multiple of seven on.
class WrongRun : public StepRun {
    void Operate() override {
        const unsigned drawn = Drawn(Below(70));
        if (drawn % 7 == 0) ++count_;
        Do(
            "count", [&] { return count_ < 3 ? count_ : 0; }, [&] { return count_; });
    }
    std::string StateDiffers(bool) override { return {}; }
    int count_ = 0;
};

// Catches a shrinker that keeps steps that nobody needs, or loses the failure.
TEST(Models, AFailureIsToldByTheFewestSteps) {
    const Modelled wrong{"Wrong", [](std::uint32_t) -> std::unique_ptr<StepRun> {
                             return std::make_unique<WrongRun>();
                         }};
    const std::string told = RunSeed(wrong, 1, 1000);
    EXPECT_NE(told.find("Wrong, kind 1, 3 steps:\n["), std::string::npos) << told;
    EXPECT_NE(told.find("wrong in count: 0, the model: 3"), std::string::npos) << told;
}

}  // namespace
}  // namespace zorvane
