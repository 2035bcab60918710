#include <gtest/gtest.h>

#include "tests/unit/propbag/BagModelRun.h"

namespace zorvane {

// Catches any operation that leaves another state or outcome than a vector with linear search.
TEST(ZVPropertyBag_Model, AnyMixOfOperationsAgreesWithAPlainVector) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        const auto disagreement = RunBagModel(seed, 2000);
        ASSERT_FALSE(disagreement) << "seed " << seed << ": " << *disagreement;
    }
}

}  // namespace zorvane
