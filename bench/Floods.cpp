// What keys cost that somebody chose to be costly, as a multiple of ordinary ones of the same
// length: usage: bench_floods [<keys>]

#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "bench/Floods.h"
#include "bench/Measure.h"
#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Collection.h"

namespace {

using namespace zorvane;
using Keys = std::vector<std::u16string>;

void AddTo(Collection& container, const Text& key) {
    container.Add(1, {.Key = key});
}
template <class Container>
void AddTo(Container& container, const Text& key) {
    container.Add(1, key);
}

// Nanoseconds for a key that is added, found and removed.
template <class Container>
double Cost(const Keys& keys) {
    std::vector<double> samples;
    for (int round = 0; round < 3; ++round) {
        const auto begun = bench::Clock::now();
        Container container;
        if constexpr (std::is_same_v<Container, ZVCollectionEx>) container.SetSorted(false);
        for (const auto& key : keys) AddTo(container, Text(key));
        for (const auto& key : keys) bench::keep(container.Item(Text(key)).ToLong());
        for (const auto& key : keys) container.Remove(Text(key));
        const std::chrono::duration<double, std::nano> taken = bench::Clock::now() - begun;
        samples.push_back(taken.count() / static_cast<double>(keys.size()));
        if (taken.count() > 10e9) break;
    }
    return bench::typical(samples);
}

template <class Container>
void Compare(const Flood& flood, const char* name, unsigned count) {
    std::mt19937 random(7);
    Keys ordinary, chosen;
    for (unsigned i = 0; i < count; ++i) {
        chosen.push_back(flood.Key(i));
        ordinary.push_back(OrdinaryKey(random, chosen[0].size()));
    }
    const double usual = Cost<Container>(ordinary);
    const double flooded = Cost<Container>(chosen);
    std::printf("%-42s %-15s %9.0f %9.0f %8.2f\n", flood.Name, name, usual, flooded,
                flooded / usual);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const auto count = static_cast<unsigned>(argc > 1 ? std::atoi(argv[1]) : 100'000);
    std::printf("%-42s %-15s %9s %9s %8s\n", "ns a key", "", "ordinary", "chosen", "ratio");
    for (const Flood& flood : kFloods) {
        if (flood.Folded) Compare<Collection>(flood, "Collection", count);
        if (flood.Lowered) Compare<CollectionEx>(flood, "CollectionEx", count);
        Compare<KeyListEX>(flood, "KeyListEX", count);
        Compare<ZVCollectionEx>(flood, "ZVCollectionEx", count);
    }
}
