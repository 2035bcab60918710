// Long model runs: usage: model_runs <seeds> <operations per seed> [<first seed>]
//
// Everything that has a model goes through the same steps as in its short test; ends with exit code
// 1 and what first disagreed, or prints how many operations agreed.

#include <cstdio>
#include <cstdlib>

#include "tests/models/StepRun.h"

int main(int argc, char** argv) {
    const long seeds = argc > 1 ? std::atol(argv[1]) : 20;
    const int operations = argc > 2 ? std::atoi(argv[2]) : 10000;
    const long first = argc > 3 ? std::atol(argv[3]) : 1;
    for (const zorvane::Modelled& modelled : zorvane::kModelled) {
        for (long seed = first; seed < first + seeds; ++seed) {
            const std::string wrong =
                zorvane::RunSeed(modelled, static_cast<std::uint32_t>(seed), operations);
            if (wrong.empty()) continue;
            std::printf("seed %ld: %s\n", seed, wrong.c_str());
            return 1;
        }
        std::printf("%s: %ld operations, 0 disagreements\n", modelled.Name, seeds * operations);
        std::fflush(stdout);
    }
    return 0;
}
