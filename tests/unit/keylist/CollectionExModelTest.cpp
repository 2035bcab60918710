#include <gtest/gtest.h>

#include "tests/unit/keylist/CollectionExModelRun.h"

namespace zorvane {

// Catches any step of any operation that leaves another state or outcome than the literal steps.
TEST(CollectionEx_Model, AnyMixOfOperationsAgreesWithTheLiteralSteps) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        const auto disagreement = RunCollectionExModel(seed, 2000);
        ASSERT_FALSE(disagreement) << "seed " << seed << ", " << *disagreement;
    }
}

}  // namespace zorvane
