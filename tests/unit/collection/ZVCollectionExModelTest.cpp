#include <gtest/gtest.h>

#include "tests/unit/collection/CollectionModelRun.h"

namespace zorvane {

// Catches any operation that leaves another state than the literal steps, hash code and slot
// included.
TEST(ZVCollectionEx_Model, AnyMixOfOperationsAgreesWithTheLiteralSteps) {
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        const auto disagreement = RunCollectionModel(seed, 2500);
        ASSERT_FALSE(disagreement) << "seed " << seed << ": " << *disagreement;
    }
}

}  // namespace zorvane
