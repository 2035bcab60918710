// Long model runs: usage: model_runs <seeds> <operations per seed>
//
// Every container goes through the same seeded streams as its short test; ends with exit code 1 and
// what first disagreed, or prints how many operations agreed.

#include <cstdio>
#include <cstdlib>

#include "tests/unit/collection/CollectionModelRun.h"
#include "tests/unit/keylist/CollectionExModelRun.h"
#include "tests/unit/keylist/KeyListModelRun.h"
#include "tests/unit/platform/CollectionModelRun.h"
#include "tests/unit/propbag/BagModelRun.h"

int main(int argc, char** argv) {
    const long seeds = argc > 1 ? std::atol(argv[1]) : 20;
    const int operations = argc > 2 ? std::atoi(argv[2]) : 10000;
    struct {
        const char* name;
        std::optional<std::string> (*run)(std::uint32_t seed, int operations);
    } const containers[] = {{"Collection", zorvane::RunPlatformCollectionModel},
                            {"KeyListEX", zorvane::RunKeyListModel},
                            {"ZVCollectionEx", zorvane::RunCollectionModel},
                            {"CollectionEx", zorvane::RunCollectionExModel},
                            {"ZVPropertyBag", zorvane::RunBagModel}};
    for (const auto& container : containers) {
        for (long seed = 1; seed <= seeds; ++seed) {
            const auto wrong = container.run(static_cast<std::uint32_t>(seed), operations);
            if (!wrong) continue;
            std::printf("%s, seed %ld: %s\n", container.name, seed, wrong->c_str());
            return 1;
        }
        std::printf("%s: %ld operations, 0 disagreements\n", container.name, seeds * operations);
        std::fflush(stdout);
    }
    return 0;
}
