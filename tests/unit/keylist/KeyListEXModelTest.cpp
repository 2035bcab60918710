#include <gtest/gtest.h>

#include "tests/unit/keylist/KeyListModelRun.h"

namespace zorvane {

// Catches any step of any operation that leaves another state or outcome than the literal steps.
TEST(KeyListEX_Model, AnyMixOfOperationsAgreesWithTheLiteralSteps) {
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        const auto disagreement = RunKeyListModel(seed, 2500);
        ASSERT_FALSE(disagreement) << "seed " << seed << ": " << *disagreement;
    }
}

}  // namespace zorvane
