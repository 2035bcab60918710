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
            ASSERT_EQ(RunSeed(modelled, seed, 5000), "");
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

}  // namespace
}  // namespace zorvane
