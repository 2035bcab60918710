#include "zorvane/platform/Random.h"

namespace zorvane {

float Random::Next() noexcept {
    // A 64-bit counter in odd steps, well mixed: any seed will do and every value occurs.
    std::uint64_t mixed = state_.Add(0x9E3779B97F4A7C15u);
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return static_cast<float>(mixed >> 40) * 0x1p-24f;
}

Random& ProgramRandom() noexcept {
    static Random random;
    return random;
}

}  // namespace zorvane
