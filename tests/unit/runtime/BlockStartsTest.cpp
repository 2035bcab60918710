#include "runtime/BlockStarts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

namespace zorvane {
namespace {

// Catches a group whose move is forgotten, counted twice, or goes to other blocks once some are
// added or dropped. Few blocks are all one group, so there are many.
TEST(BlockStarts, AgreeWithCountsThatAreSummed) {
    std::mt19937 random(5);
    std::vector<std::uint32_t> counts(200, 3);
    BlockStarts starts;
    starts.Assign(200, 3);
    for (int step = 0; step < 4000; ++step) {
        const std::size_t block = random() % counts.size();
        const auto at = static_cast<std::uint32_t>(block);
        const auto what = random() % 10;
        if (what == 0 && counts[block] > 1) {
            const std::uint32_t keep = counts[block] / 2;
            starts.Reserve(static_cast<std::uint32_t>(counts.size()) + 1);
            starts.Insert(at + 1, starts.At(at) + keep);
            counts.insert(counts.begin() + static_cast<std::ptrdiff_t>(block) + 1,
                          counts[block] - keep);
            counts[block] = keep;
        } else if (what < 5 && counts[block] > 1) {
            starts.MoveBehind(at, 0u - 1u);
            --counts[block];
        } else if (what < 6 && counts.size() > 1) {
            starts.MoveBehind(at, 0u - counts[block]);
            starts.Erase(at);
            counts.erase(counts.begin() + static_cast<std::ptrdiff_t>(block));
        } else {
            starts.MoveBehind(at, 1);
            ++counts[block];
        }
        const std::size_t asked = random() % counts.size();
        const auto sum = std::accumulate(counts.begin(),
                                         counts.begin() + static_cast<std::ptrdiff_t>(asked), 0u);
        const auto askedBlock = static_cast<std::uint32_t>(asked);
        ASSERT_EQ(starts.At(askedBlock), sum) << "step " << step;
        ASSERT_EQ(starts.BlockOf(sum), askedBlock) << "step " << step;
        ASSERT_EQ(starts.BlockOf(sum + counts[asked] - 1), askedBlock) << "step " << step;
    }
}

}  // namespace
}  // namespace zorvane
